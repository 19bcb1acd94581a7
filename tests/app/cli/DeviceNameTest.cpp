#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"
#include "cli/DeviceName.h"

namespace tq4x::cli::test
{
namespace
{

TEST(DeviceName, NamesOfDevicesWhateverTheirExtension)
{
    const struct
    {
        const char* Name;
        bool IsDevice;
    } cases[] = {
        {"house", false}, {"con", true},     {"CON", true},      {"Nul", true},    {"prn", true},
        {"aux.v2", true}, {"aux .v2", true}, {"com1", true},     {"LPT9", true},   {"com\xc2\xb2", true},
        {"conin$", true}, {"", false},       {".con", false},    {"con1", false},  {"com", false},
        {"com0", false},  {"com10", false},  {"console", false}, {"a con", false}, {"com\xc3\xa4", false},
    };

    for (const auto& entry : cases) {
        EXPECT_EQ(IsDeviceName(entry.Name), entry.IsDevice) << entry.Name;
    }
}

TEST_F(ProgramTest, OutputNamesOfDevicesAreRefused)
{
    const Outcome outcome = Export({"-n", "Aux.1"});
    EXPECT_EQ(outcome.Code, WrongUsage);
    EXPECT_EQ(outcome.Err, "error: The output name \"Aux.1\" belongs to a device on Windows; --name gives "
                           "another.\n");
    EXPECT_FALSE(std::filesystem::exists(Folder / "out"));
}

} // namespace
} // namespace tq4x::cli::test
