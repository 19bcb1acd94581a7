#include "scene/ClassTree.h"

namespace XSI::Host
{

namespace
{

/// The class that a class is derived from; siUnknownClassID above the last one.
siClassID BaseOf(siClassID classId)
{
    switch (classId) {
    case siUnknownClassID:
    case siSIObjectID:
        return siUnknownClassID;
    case siProjectItemID:
    case siApplicationID:
    case siSelectionID:
    case siUIToolkitID:
    case siProgressBarID:
    case siContextID:
    case siPluginID:
    case siCommandID:
    case siArgumentID:
    case siMenuID:
    case siMenuItemID:
    case siPPGLayoutID:
    case siPPGItemID:
        return siSIObjectID;
    case siSceneItemID:
    case siSceneID:
    case siParameterID:
    case siMaterialLibraryID:
    case siShaderID:
    case siTextureLayerID:
    case siClipID:
    case siTimeControlID:
    case siGeometryID:
    case siEnvelopeID:
    case siFCurveID:
    case siExpressionID:
        return siProjectItemID;
    case siProjectID:
    case siX3DObjectID:
    case siPropertyID:
    case siMaterialID:
    case siPrimitiveID:
    case siClusterID:
        return siSceneItemID;
    case siNullID:
    case siCameraID:
    case siLightID:
    case siModelID:
    case siChainElementID:
        return siX3DObjectID;
    case siChainRootID:
    case siChainBoneID:
    case siChainEffectorID:
        return siChainElementID;
    case siCustomPropertyID:
    case siKinematicsID:
    case siKinematicStateID:
    case siStaticKinematicStateID:
    case siConstraintID:
    case siClusterPropertyID:
        return siPropertyID;
    case siShaderParameterID:
        return siParameterID;
    case siTextureID:
        return siShaderID;
    case siImageClipID:
        return siClipID;
    case siPolygonMeshID:
    case siNurbsSurfaceMeshID:
    case siNurbsCurveListID:
        return siGeometryID;
    }
    return siUnknownClassID;
}

} // namespace

bool IsDerived(siClassID classId, siClassID base)
{
    while (classId != siUnknownClassID && classId != base) {
        classId = BaseOf(classId);
    }
    return classId != siUnknownClassID;
}

} // namespace XSI::Host
