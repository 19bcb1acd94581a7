#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tq4x
{

/// Severity of a message: 0 error, 1 warning, any other value information.
enum class Severity : std::int32_t
{
    Error = 0,
    Warning = 1,
    Information = 2,
};

/// Answer of an operation that reports in text: status 0 is success, any other value comes with its reason.
struct [[nodiscard]] LogResult
{
    std::int32_t Status = 0;
    std::string Message;
};

/// Codes of the message table. Codes below 25 are errors, the others warnings.
enum class MessageCode : std::int32_t
{
    BrellStudioNotFound = 0,
    CannotGetTextureSize = 1,
    CannotOpenFile = 2,
    FailedToStartBrellStudio = 3,
    HoledPolygon = 4,
    InfluenceNotOutputted = 5,
    MultipleBindPoses = 6,
    NoEffectiveNode = 7,
    NoOutputFile = 8,
    NoShadingGroup = 9,
    OutputNodeNotSelected = 10,
    OutputFileNameWrong = 11,
    OutputFolderWrong = 12,
    SameUserAttribute = 13,
    TextureImageNameWrong = 14,
    TextureSizeWrong = 15,
    TgaFileWrong = 16,
    TooManyTextures = 17,
    UvLinkingNotIdentical = 18,
    VertexNumberDiffers = 19,
    WrongWeightedVertices = 20,
    PolygonBoneSizeOver = 21,
    MaxReservedUniformRegistersWrong = 22,
    InternalError = 23,
    MergeQmdlPathWrong = 24,
    UnknownError = 25,
    CurveNotConnectedToFrameExtension = 26,
    CannotExportNurbsSurface = 27,
    CannotExportSubdivisionSurface = 28,
    CannotGetUv = 29,
    DeformerNotEffective = 30,
    FileTextureNotConnected = 31,
    FrameOffsetNotZero = 32,
    InheritsTransformOff = 33,
    MaterialNameChanged = 34,
    NoShader = 35,
    NodeNameChanged = 36,
    OutputFileNameChanged = 37,
    ProceduralTextureIgnored = 38,
    ProjectionMappingNotSupported = 39,
    PsdTextureIgnored = 40,
    ShaderNotSupported = 41,
    ShearNotZero = 42,
    StencilMappingNotSupported = 43,
    PatternTextureNotFound = 44,
    TextureNameChanged = 45,
    MultipleShapes = 46,
    SameTextureName = 47,
    ZeroNormal = 48,
    TextureFileMissing = 49,
    TextureTypeNotSupported = 50,
    TextureFormatNotSupported = 51,
    TooManyTexturesOnMesh = 52,
    MapChannelMissing = 53,
    OptimizationFailed = 54,
    CannotGetTangentUv = 55,
    BillboardIgnored = 56,
};

/// The one channel through which the core speaks. The host side fills the slot with a function that forwards
/// to the host's script log; the core never knows the host. Not locked: all work runs on the host's command
/// thread.
class MessageLog
{
public:
    using Callback = LogResult (*)(const std::string& text, Severity severity);

    /// The process-wide log, created with an empty slot at the first call.
    static MessageLog& Instance();

    /// Fills the slot; nullptr empties it (tests).
    void SetCallback(Callback callback) { m_callback = callback; }

    /// Forwards a free text unchanged. With an empty slot: status 1, "Loggin callback is NULL.".
    LogResult Print(const std::string& text, Severity severity) const;

    /// Forwards the text of a code, followed by "(detail)" when the detail is not empty, with the severity of
    /// the code's number. Numbers outside the table give "Unknown Error".
    LogResult Report(MessageCode code, std::string detail = {}) const;

private:
    MessageLog() = default;

    Callback m_callback = nullptr;
};

/// Print to the log without looking at the answer.
void PrintMessage(const std::string& text, Severity severity);

/// Report to the log without looking at the answer.
void ReportMessage(MessageCode code, std::string detail = {});

} // namespace tq4x
