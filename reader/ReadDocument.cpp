#include "ReadDocument.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "AttributeOrder.h"
#include "ParseSections.h"
#include "Schema.h"
#include "XmlTree.h"

namespace tq4x::reader
{
namespace
{

constexpr std::array<std::string_view, FileKindCount> Extensions = {
    "qmdl", "qtex", "qskla", "qmata", "qmdla", "qcam", "qlgt", "qenv",
};

/// Nothing, with a finding, if the file can't be read whole.
std::optional<std::string> LoadText(const std::filesystem::path& file, FindingList& findings)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        findings.Error("TQ-READ", 0, "The file does not exist or is no regular file.");
        return std::nullopt;
    }
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > MostFileBytes) {
        findings.Error("TQ-READ-SIZE", 0,
                       "The file is larger than " + std::to_string(MostFileBytes >> 20) + " MiB.");
        return std::nullopt;
    }
    std::ifstream stream(file, std::ios::binary);
    std::string text(static_cast<std::size_t>(size), '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (!stream || static_cast<std::uintmax_t>(stream.gcount()) != size) {
        findings.Error("TQ-READ", 0, "The file can't be read.");
        return std::nullopt;
    }
    return text;
}

/// The declaration is the same in every file. Line ends may be those of Windows.
void CheckDeclaration(std::string_view text, FindingList& findings)
{
    constexpr std::string_view Declaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>";
    const std::string_view rest = text.substr(std::min(text.size(), Declaration.size()));
    if (!text.starts_with(Declaration) || !(rest.starts_with("\n") || rest.starts_with("\r\n"))) {
        findings.Error("TQ-XML-DECLARATION", 1,
                       "The first line must be " + std::string(Declaration) + " and nothing else.");
    }
}

Envelope ParseEnvelope(const ElementReader& editData)
{
    const ElementReader create = editData.Child("MetaData").Child("Create");
    const ElementReader tool = create.Child("ToolDescriptions");
    return {create.Text("Author"), create.Text("Date"), create.Text("Source"), tool.Text("Name"),
            tool.Text("Version")};
}

void ParseTextureContent(Document& document, const ElementReader& content)
{
    const ElementReader textures = content.Child("Textures");
    const ElementReader plain = textures.Child("ImageTextureQtr");
    const ElementReader texture = plain.Exists() ? plain : textures.Child("CubeTextureQtr");
    if (texture.Exists()) {
        document.Texture = ParseTexture(texture);
    }
}

void ParseContent(Document& document, const ElementReader& content)
{
    const ElementReader animations = content.Child("Animations");
    switch (document.Kind) {
    case FileKind::Model:
        document.Model = ParseModel(content);
        break;
    case FileKind::Texture:
        ParseTextureContent(document, content);
        break;
    case FileKind::SkeletalAnimation:
        if (const ElementReader data = animations.Child("SkeletalAnimationData"); data.Exists()) {
            document.SkeletalAnimation = ParseSkeletalAnimation(data);
        }
        break;
    case FileKind::MaterialAnimation:
        if (const ElementReader data = animations.Child("MaterialAnimationData"); data.Exists()) {
            document.MaterialAnimation = ParseMaterialAnimation(data);
        }
        break;
    case FileKind::VisibilityAnimation:
        if (const ElementReader data = animations.Child("AnimationData"); data.Exists()) {
            document.VisibilityAnimation = ParseVisibilityAnimation(data);
        }
        break;
    case FileKind::Camera:
    case FileKind::Light:
    case FileKind::Environment:
        document.Stage = ParseStage(content);
        break;
    }
}

} // namespace

std::optional<FileKind> KindOf(const std::filesystem::path& file)
{
    std::string extension = file.extension().string();
    std::ranges::transform(extension, extension.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    const auto isSame = [&](std::string_view known) { return extension == "." + std::string(known); };
    const auto found = std::ranges::find_if(Extensions, isSame);
    return found == Extensions.end() ? std::nullopt
                                     : std::optional(static_cast<FileKind>(found - Extensions.begin()));
}

std::string_view ExtensionOf(FileKind kind)
{
    return Extensions[static_cast<std::size_t>(kind)];
}

std::optional<Document> ReadDocument(const std::filesystem::path& file, FindingList& findings)
{
    const std::optional<FileKind> kind = KindOf(file);
    if (!kind) {
        findings.Error("TQ-READ-KIND", 0, "The extension is none of the eight kinds of files.");
        return std::nullopt;
    }
    const std::optional<std::string> text = LoadText(file, findings);
    return text ? ReadDocumentText(*kind, *text, findings) : std::nullopt;
}

std::optional<Document> ReadDocumentText(FileKind kind, std::string_view text, FindingList& findings)
{
    const std::optional<XmlTree> tree = XmlTree::Parse(text, findings);
    if (!tree) {
        return std::nullopt;
    }
    CheckDeclaration(text, findings);
    Document document;
    document.Kind = kind;
    const ElementReader root(&tree->Root(), findings);
    const ElementReader content = root.Child("GraphicsContentQtr");
    const bool isTexture = kind == FileKind::Texture;
    document.Head = ParseEnvelope((isTexture ? root : content).Child("EditData"));
    ParseContent(document, content);
    CheckSchema(kind, *tree, findings);
    CheckAttributeOrder(kind, *tree, findings);
    return document;
}

} // namespace tq4x::reader
