# Writes a source file that holds the texts of files: cmake -DOUTPUT=... -DFILES="a;b" -P EmbedFiles.cmake
set(rows "")
foreach(file IN LISTS FILES)
    get_filename_component(name "${file}" NAME)
    file(READ "${file}" text)
    string(APPEND rows "    {\"${name}\", R\"embedded(${text})embedded\"},\n")
endforeach()
file(WRITE "${OUTPUT}" "#include \"EmbeddedSchemas.h\"

namespace tq4x::reader
{
namespace
{

constexpr EmbeddedFile Files[] = {
${rows}};

} // namespace

std::span<const EmbeddedFile> EmbeddedSchemas()
{
    return Files;
}

} // namespace tq4x::reader
")
