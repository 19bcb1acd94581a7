#pragma once

#include <limits>

// Sizes are those of the host's binary interface: both types have 32 bits on every platform.
#ifdef _WIN32
typedef long LONG;
typedef unsigned long ULONG;
#define XSI_PLUGIN_EXPORT __declspec(dllexport)
#else
typedef int LONG;
typedef unsigned int ULONG;
#define XSI_PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

// The host finds callbacks by their plain name, yet they answer a class: C linkage is for the name alone.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif

/// Head of every function that the host calls by name.
#define SICALLBACK extern "C" XSI_PLUGIN_EXPORT XSI::CStatus

namespace XSI
{

/// As a time argument: the value at the host's current time. All times are frames.
inline constexpr double CurrentTime = std::numeric_limits<double>::max();

/// Classes of host objects, for CRef::GetClassID and IsA. A class answers IsA for itself and its bases.
/// Plug-ins may know the numbers of models and of the two elements that a skeleton is made of.
enum siClassID
{
    siUnknownClassID = 0,
    siSIObjectID = 1,
    siProjectItemID = 2,
    siSceneItemID = 3,
    siApplicationID = 4,
    siProjectID = 5,
    siSceneID = 6,
    siX3DObjectID = 7,
    siNullID = 8,
    siCameraID = 9,
    siLightID = 10,
    siPropertyID = 11,
    siCustomPropertyID = 12,
    siParameterID = 13,
    siShaderParameterID = 14,
    siKinematicsID = 15,
    siKinematicStateID = 16,
    siStaticKinematicStateID = 17,
    siConstraintID = 18,
    siMaterialID = 19,
    siMaterialLibraryID = 20,
    siShaderID = 21,
    siTextureID = 22,
    siTextureLayerID = 23,
    siClipID = 24,
    siImageClipID = 25,
    siTimeControlID = 26,
    siPrimitiveID = 27,
    siGeometryID = 28,
    siPolygonMeshID = 29,
    siNurbsSurfaceMeshID = 30,
    siNurbsCurveListID = 31,
    siClusterID = 32,
    siClusterPropertyID = 33,
    siEnvelopeID = 34,
    siSelectionID = 35,
    siUIToolkitID = 36,
    siProgressBarID = 37,
    siContextID = 38,
    siPluginID = 39,
    siCommandID = 40,
    siArgumentID = 41,
    siMenuID = 42,
    siMenuItemID = 43,
    siPPGLayoutID = 44,
    siPPGItemID = 45,
    siFCurveID = 46,
    siExpressionID = 47,
    siModelID = 74,
    siChainBoneID = 0x4b,
    siChainElementID = 80,
    siChainRootID = 81,
    siChainEffectorID = 0x52,
};

/// Severities of the host's script log.
enum siSeverityType
{
    siErrorMsg = 2,
    siWarningMsg = 4,
    siInfoMsg = 8,
    siVerboseMsg = 16,
};

/// What drives a parameter, for Parameter::IsAnimated. A connected shader is a source, but not an animation.
enum siSourceType
{
    siUnknownSource = 0,
    siFCurveSource = 1,
    siExpressionSource = 2,
    siShaderSource = 3,
    siAnySource = 4, ///< Any animation: curve or expression.
};

/// Bits of a parameter's capabilities.
enum siCapabilities
{
    siAnimatable = 1,
    siReadOnly = 2,
    siPersistable = 4,
    siNotInspectable = 8,
    siKeyable = 2048,
};

/// Kinds of a model.
enum siModelKind
{
    siModelKind_Regular = 0,
    siModelKind_Reference = 1,
    siModelKind_Instance = 2,
};

/// Buttons of a message box, and its answers.
enum siMsgButtonFlags
{
    siMsgOkOnly = 0,
    siMsgOkCancel = 1,
    siMsgYesNoCancel = 3,
    siMsgYesNo = 4,
};

enum siMsgReturn
{
    siMsgOk = 1,
    siMsgCancel = 2,
    siMsgYes = 6,
    siMsgNo = 7,
};

/// Where a menu of a plug-in is hung into the host's menu bar.
enum siMenuAnchorPoints
{
    siMenuMainFileExportID = 1014,
};

/// How much of the construction history a geometry includes.
enum siConstructionMode
{
    siConstructionModeModeling = 0,
    siConstructionModePrimaryShape = 1,
    siConstructionModeAnimation = 2,
    siConstructionModeSecondaryShape = 3,
};

/// Rules of subdivision.
enum siSubdivisionRuleType
{
    siCatmullClark = 0,
    siDooSabin = 1,
    siLinear = 2,
};

} // namespace XSI
