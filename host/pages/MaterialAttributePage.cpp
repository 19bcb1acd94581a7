#include "pages/AttributePage.h"

namespace tq4x
{
namespace
{

constexpr const char* CullFace = "TQ4X_ForPennonMatAttrCullFace";
constexpr const char* FragmentLighting = "TQ4X_ForPennonMatAttrFragmentLighting";
constexpr const char* VertexLighting = "TQ4X_ForPennonMatAttrVertexLighting";
constexpr const char* BlendMode = "TQ4X_ForPennonMatAttrBlendMode";
constexpr const char* NoCompress = "TQ4X_ForPennonMatAttrNoCompress";

constexpr const char* CullFaceWords[] = {"Front Face", "Back Face", "Always", "Never"};
constexpr int AutoBlend = -1;
/// From automatic on. 6 may be stored, and has no word.
constexpr const char* BlendModeWords[] = {"Auto", "Opaque", "Alpha Test", "Translucent",
                                          "Add",  "Sub",    "Multiply"};
constexpr const char* NoCompressWords[] = {"Compress if possible", "Don't compress"};

constexpr PageParameter Values[] = {
    {.Name = CullFace, .Type = XSI::CValue::siInt4, .Default = 1, .Max = 3},
    {.Name = FragmentLighting, .Default = 1},
    {.Name = VertexLighting},
    {.Name = BlendMode, .Type = XSI::CValue::siInt4, .Default = AutoBlend, .Min = AutoBlend, .Max = 6},
    {.Name = NoCompress, .Type = XSI::CValue::siInt4, .Max = 1},
};

constexpr SearchBox CullFaceBoxes[] = {
    {"TQ4X_ForPennonMatAttrSearchCullFaceFront", "Front Face", 0},
    {"TQ4X_ForPennonMatAttrSearchCullFaceBack", "Back Face", 1},
    {"TQ4X_ForPennonMatAttrSearchCullFaceAlways", "Always", 2},
    {"TQ4X_ForPennonMatAttrSearchCullFaceNever", "Never", 3},
};

constexpr SearchBox FragmentLightingBoxes[] = {
    {"TQ4X_ForPennonMatAttrSearchFragmentLightingOn", "On", 1},
    {"TQ4X_ForPennonMatAttrSearchFragmentLightingOff", "Off", 0},
};

constexpr SearchBox VertexLightingBoxes[] = {
    {"TQ4X_ForPennonMatAttrSearchVertexLightingOn", "On", 1},
    {"TQ4X_ForPennonMatAttrSearchVertexLightingOff", "Off", 0},
};

constexpr SearchBox BlendBoxes[] = {
    {"TQ4X_ForPennonMatAttrSearchBlendAuto", "Auto", AutoBlend},
    {"TQ4X_ForPennonMatAttrSearchBlendOpaque", "Opaque", 0},
    {"TQ4X_ForPennonMatAttrSearchBlendAlphaTest", "Alpha Test", 1},
    {"TQ4X_ForPennonMatAttrSearchBlendTranslucent", "Translucent", 2},
    {"TQ4X_ForPennonMatAttrSearchBlendAdd", "Add", 3},
    {"TQ4X_ForPennonMatAttrSearchBlendSub", "Sub", 4},
    {"TQ4X_ForPennonMatAttrSearchBlendMultiply", "Multiply", 5},
};

constexpr SearchBox CompressBoxes[] = {
    {"TQ4X_ForPennonMatAttrSearchCompressOn", "Compress", 0},
    {"TQ4X_ForPennonMatAttrSearchCompressOff", "No Compress", 1},
};

constexpr SearchGroup Groups[] = {
    {CullFace, "Face Culling", CullFaceBoxes},
    {FragmentLighting, "Fragment Lighting", FragmentLightingBoxes},
    {VertexLighting, "Vertex Lighting", VertexLightingBoxes},
    {BlendMode, "Blend Mode", BlendBoxes},
    {NoCompress, "Compress Material", CompressBoxes},
};

void AddControls(XSI::PPGLayout& layout)
{
    layout.AddGroup("Material Attribute");
    layout.AddEnumControl(CullFace, Choices(CullFaceWords), "Face Culling");
    layout.AddItem(FragmentLighting, "Fragment Lighting", XSI::siControlCheck);
    layout.AddItem(VertexLighting, "Vertex Lighting", XSI::siControlCheck);
    layout.AddEnumControl(BlendMode, Choices(BlendModeWords, AutoBlend), "Blend Mode");
    layout.AddEnumControl(NoCompress, Choices(NoCompressWords), XSI::CString(), XSI::siControlRadio);
    layout.EndGroup();
}

} // namespace

const AttributePage& MaterialAttributePage()
{
    static constexpr AttributePage Page = {
        .Type = "TQ4X_ForPennonMaterialAttrProp",
        .Carrier = PageCarrier::Material,
        .FindsMaterials = true,
        .Values = Values,
        .Groups = Groups,
        .AndOr = "TQ4X_ForPennonMatAttrSearchAndOr",
        .SearchButton = "TQ4X_ForPennonMatAttrSearchButton",
        .SelectList = "TQ4X_ForPennonMatAttrSelectList",
        .AddValueControls = AddControls,
    };
    return Page;
}

} // namespace tq4x

TQ4X_ATTRIBUTE_PAGE_CALLBACKS(TQ4X_ForPennonMaterialAttrProp, MaterialAttributePage)
