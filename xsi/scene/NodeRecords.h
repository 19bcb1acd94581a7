#pragma once

#include <string_view>

#include "scene/Database.h"

// Records of 3D objects, for the rest of this library.

namespace XSI::Host
{

/// Makes a node below a parent, or below the scene root if the parent is no node.
NodeObject& CreateNode(siClassID classId, const CRef& parent, std::string_view name, std::string_view type);

/// The model whose names the children of a node belong to: the node itself if it is one.
ObjectId ModelForChildrenOf(const NodeObject& parent);

/// What a node has of each; made when first asked for.
PrimitiveObject& PrimitiveOf(NodeObject& node);
KinematicsObject& KinematicsOf(NodeObject& node);
ItemObject& StaticKinematicsOf(NodeObject& node);

/// The mesh of a node; null if it has none.
GeometryObject* MeshOf(const CRef& node);

} // namespace XSI::Host
