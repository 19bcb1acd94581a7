#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "Finding.h"
#include "ReadAnimation.h"
#include "ReadModel.h"
#include "ReadStage.h"
#include "ReadTexture.h"

namespace tq4x::reader
{

enum class FileKind
{
    Model,               ///< .qmdl
    Texture,             ///< .qtex
    SkeletalAnimation,   ///< .qskla
    MaterialAnimation,   ///< .qmata
    VisibilityAnimation, ///< .qmdla
    Camera,              ///< .qcam
    Light,               ///< .qlgt
    Environment,         ///< .qenv
};

inline constexpr std::size_t FileKindCount = 8;

/// The kind that a file's extension tells, whatever its case. Nothing for other extensions.
[[nodiscard]] std::optional<FileKind> KindOf(const std::filesystem::path& file);

/// "qmdl"
[[nodiscard]] std::string_view ExtensionOf(FileKind kind);

/// Who made a file, when and from what.
struct Envelope
{
    std::string Author;
    std::string Date;
    std::string Source;
    std::string ToolName;
    std::string ToolVersion;
};

/// A file that was read. Of the contents, that of its kind is in use; it is absent in files that hold nothing
/// but the frame, such as an animation in which nothing moves.
struct Document
{
    FileKind Kind = FileKind::Model;
    Envelope Head;
    std::optional<tq4x::reader::Model> Model;
    std::optional<tq4x::reader::Texture> Texture;
    std::optional<tq4x::reader::SkeletalAnimation> SkeletalAnimation;
    std::optional<tq4x::reader::MaterialAnimation> MaterialAnimation;
    std::optional<tq4x::reader::VisibilityAnimation> VisibilityAnimation;
    tq4x::reader::Stage Stage; ///< cameras and lights
};

/// Files above this size are not read, in bytes.
inline constexpr std::size_t MostFileBytes = std::size_t{1} << 30;

/// Reads a file of one of the eight kinds. Nothing if it can't be read at all (missing, too big, of another
/// kind, not well-formed), with a finding of code "TQ-READ..." or "TQ-XML...". Else the document and whatever
/// the grammar and the numbers of the file broke: with an error among the findings the document holds
/// defaults in the broken places. What belongs together in a file, or among files, is the business of
/// "CheckFiles.h".
[[nodiscard]] std::optional<Document> ReadDocument(const std::filesystem::path& file, FindingList& findings);

/// The same for text in memory.
[[nodiscard]] std::optional<Document> ReadDocumentText(FileKind kind, std::string_view text,
                                                       FindingList& findings);

} // namespace tq4x::reader
