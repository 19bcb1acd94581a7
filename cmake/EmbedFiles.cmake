# Writes a source file that holds the texts of files:
#     cmake -DOUTPUT=... "-DFILES=a;b" -DHEADER=a/B.h -DNAMESPACE=a::b -DFUNCTION=B -P EmbedFiles.cmake
# The function is declared in the header and returns std::span<const reader::EmbeddedFile>.
set(rows "")
foreach(file IN LISTS FILES)
    get_filename_component(name "${file}" NAME)
    file(READ "${file}" text)
    string(APPEND rows "    {\"${name}\", R\"embedded(${text})embedded\"},\n")
endforeach()
file(WRITE "${OUTPUT}" "#include \"${HEADER}\"

#pragma GCC diagnostic ignored \"-Woverlength-strings\"

namespace ${NAMESPACE}
{
namespace
{

// Not constexpr: compilers give up on measuring long texts.
const reader::EmbeddedFile Files[] = {
${rows}};

} // namespace

std::span<const reader::EmbeddedFile> ${FUNCTION}()
{
    return Files;
}

} // namespace ${NAMESPACE}
")
