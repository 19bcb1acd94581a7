#include "CheckFiles.h"
#include "Summarize.h"
#include "glb/ConvertToGlb.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace tq4x::reader;

namespace
{

/// Every use of what was read that can go past a list.
void Use(const Document& document)
{
    for (const SummaryRow& row : Summarize(document))
        static_cast<void>(ValueText(row));
    if (document.Texture)
        for (const TextureFace& face : document.Texture->Faces)
            for (const TextureLevel& level : face.Levels)
                static_cast<void>(DecodeLevel(document.Texture->Format, level));
    if (document.SkeletalAnimation)
        for (std::size_t bone = 0; bone < document.SkeletalAnimation->Bones.Bones.size(); ++bone)
            static_cast<void>(EvaluateBone(*document.SkeletalAnimation, bone, 1.5F));
    if (document.Model)
        for (const Shape& shape : document.Model->Shapes)
            for (const PrimitiveSet& set : shape.Sets)
                for (std::size_t vertex = 0; vertex < shape.VertexCount && vertex < 100; ++vertex)
                    static_cast<void>(InfluencesOf(shape, set, vertex));
}

/// What the checks let through must be fit to be converted.
void Convert(const Document& document)
{
    ExportedFiles files;
    files.Files = {{"fuzz", document}};
    if (document.Texture)
        files.Textures["fuzz"] = *document.Texture;
    const GlbResult result = ConvertToGlb(files);
    if (result.Glb.empty() && result.Error.empty())
        std::abort();
}

} // namespace

/// The first byte picks the kind ("0" to "7"), the rest is the file. Without a document there must be an
/// error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const auto kind = static_cast<FileKind>(data[0] % FileKindCount);
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    FindingList findings("file");
    const std::optional<Document> document = ReadDocumentText(kind, text, findings);
    if (!document) {
        if (!findings.HasErrors())
            std::abort();
        return 0;
    }
    Use(*document);
    CheckDocument(*document, findings); // also with findings: it must survive what broken places leave
    if (!findings.HasErrors())
        Convert(*document);
    static_cast<void>(findings.Take());
    return 0;
}
