#include <gtest/gtest.h>

#include <fstream>

#include "gltf/ResolveUri.h"
#include "gltf/SceneError.h"
#include "support/Links.h"
#include "support/TemporaryFolder.h"

namespace tq4x::gltf
{
namespace
{

namespace fs = std::filesystem;

using tq4x::test::HasLinks;
using tq4x::test::MakeLink;

class ResolveUriTest : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::create_directories(m_folder / "scene/sub");
        fs::create_directories(m_folder / "other");
        std::ofstream(m_folder / "scene/a b.bin") << "x";
        std::ofstream(m_folder / "other/out.bin") << "x";
        MakeLink(m_folder / "other/out.bin", m_folder / "scene/link.bin");
        MakeLink(m_folder / "other", m_folder / "scene/linked");
        MakeLink("a b.bin", m_folder / "scene/inner.bin");
    }

    std::string Scene() const { return fs::canonical(m_folder / "scene").string(); }

    std::string InScene(const std::string& name) const
    {
        return (fs::canonical(m_folder / "scene") / name).make_preferred().string();
    }

    std::string Resolve(const std::string& uri, const std::string& root = "") const
    {
        const AssetFolders folders{m_folder / "scene", root.empty() ? fs::path() : m_folder / root};
        try {
            return ResolveUri(uri, folders, "/images/0/uri").string();
        } catch (const SceneError& error) {
            EXPECT_EQ(error.Place, "/images/0/uri");
            return error.Text;
        }
    }

    tq4x::test::TemporaryFolder m_folder;
};

TEST_F(ResolveUriTest, FindsFilesBelowTheScene)
{
    EXPECT_EQ(Resolve("a%20b.bin"), InScene("a b.bin"));
    EXPECT_EQ(Resolve("a b.bin"), InScene("a b.bin"));
    EXPECT_EQ(Resolve("./sub/../a%20b.bin"), InScene("a b.bin"));
    EXPECT_EQ(Resolve("sub\\t%c3%A4.png"), InScene("sub/t\xc3\xa4.png"));
    EXPECT_EQ(Resolve("missing/x.png"), InScene("missing/x.png"));
    if (HasLinks) {
        EXPECT_EQ(Resolve("inner.bin"), InScene("a b.bin"));
    }
    EXPECT_EQ(Resolve("100%.png"), InScene("100%.png"));
}

TEST_F(ResolveUriTest, DecodesOnce)
{
    EXPECT_EQ(Resolve("a%2520b.bin"), InScene("a%20b.bin"));
}

TEST_F(ResolveUriTest, RefusesWhatLeadsOut)
{
    const char* const addresses[] = {"../other/out.bin",
                                     "sub/../../other/out.bin",
                                     "%2e%2e/other/out.bin",
                                     "..\\other\\out.bin",
                                     "link.bin",
                                     "linked/out.bin",
                                     "/etc/passwd",
                                     "..",
                                     ".",
                                     "sub/.."};
    for (const std::string uri : addresses) {
        if (!HasLinks && uri.starts_with("link")) {
            continue;
        }
        EXPECT_EQ(Resolve(uri), "The file \"" + uri + "\" lies outside the folder " + Scene() +
                                    "; --asset-root DIR allows another one.");
    }
}

TEST_F(ResolveUriTest, AssetRootWidens)
{
    const std::string top = fs::canonical(m_folder.Path()).string();
    const std::string out = (fs::path(top) / "other" / "out.bin").string();
    EXPECT_EQ(Resolve("../other/out.bin", "."), out);
    if (HasLinks) {
        EXPECT_EQ(Resolve("link.bin", "."), out);
    }
    EXPECT_EQ(Resolve("a%20b.bin", "."), InScene("a b.bin"));
    EXPECT_EQ(Resolve("a%20b.bin", "other"), "The file \"a%20b.bin\" lies outside the folder " +
                                                 (fs::path(top) / "other").string() +
                                                 "; --asset-root DIR allows another one.");
    EXPECT_EQ(Resolve("../../x", "."), "The file \"../../x\" lies outside the folder " + top +
                                           "; --asset-root DIR allows another one.");
}

TEST_F(ResolveUriTest, RefusesSchemes)
{
    for (const std::string uri : {"file:///etc/passwd", "https:x", "C:/x.png", "a+b-c.d:x"}) {
        EXPECT_EQ(Resolve(uri),
                  "The address \"" + uri +
                      "\" is refused: only relative file names are read; files below --asset-root "
                      "DIR are allowed.");
    }
    // A colon ends the name of a drive on Windows, whatever character that is.
    const bool hasDrives = fs::path("1:x").has_root_name();
    EXPECT_EQ(Resolve("1:x"), hasDrives ? "The file \"1:x\" lies outside the folder " + Scene() +
                                              "; --asset-root DIR allows another one."
                                        : InScene("1:x"));
}

TEST_F(ResolveUriTest, RefusesWhatIsNoName)
{
    EXPECT_EQ(Resolve("a%00b"), "The address \"a%00b\" is no file name.");
    EXPECT_EQ(Resolve(""), "The address \"\" is no file name.");
}

TEST_F(ResolveUriTest, CutsLongAddressesInMessages)
{
    EXPECT_EQ(Resolve(std::string(1000, 'x')),
              "The address \"" + std::string(200, 'x') + "...\" is no file name.");
}

TEST_F(ResolveUriTest, RefusesLinksThatLeadInCircles)
{
    MakeLink("circle.bin", m_folder / "scene/circle.bin");
    if (HasLinks) {
        EXPECT_EQ(Resolve("circle.bin"), "The address \"circle.bin\" is no file name.");
    }
}

TEST(DataUriTest, DecodesEveryLength)
{
    const struct
    {
        const char* Uri;
        std::string Bytes;
    } cases[] = {
        {"data:;base64,", ""},           {"data:;base64,QQ==", "A"},
        {"data:;base64,QQ", "A"},        {"data:;base64,QUI=", "AB"},
        {"data:a/b;base64,QUJD", "ABC"}, {"data:a/b;charset=x;base64,QUJDRA==", "ABCD"},
        {"data:,A%20B", "A B"},          {"data:;base64,+/8=", "\xfb\xff"},
    };

    for (const auto& entry : cases) {
        const auto bytes = DecodeDataUri(entry.Uri, "");
        EXPECT_EQ(std::string(bytes.begin(), bytes.end()), entry.Bytes) << entry.Uri;
    }
}

TEST(DataUriTest, RefusesDamage)
{
    const struct
    {
        const char* Uri;
        const char* Error;
    } cases[] = {
        {"data:;base64", "The data: address has no comma."},
        {"data:;base64,QUJDR", "The base64 data is truncated."},
        {"data:;base64,Q*==", "The data is not base64."},
        {"data:;base64,QQ==QQ==", "The data is not base64."},
    };

    for (const auto& entry : cases) {
        try {
            (void)DecodeDataUri(entry.Uri, "/buffers/0/uri");
            ADD_FAILURE() << entry.Uri;
        } catch (const SceneError& error) {
            EXPECT_EQ(error.Text, entry.Error) << entry.Uri;
            EXPECT_EQ(error.Place, "/buffers/0/uri");
        }
    }
}

} // namespace
} // namespace tq4x::gltf
