#pragma once

namespace tq4x
{

struct ExportContext;

/// Runs the conversion of all collectors: shaders of the materials first, then textures, the ambient light,
/// the scene objects with parents before children, and last the materials' finish, which needs all meshes.
/// The bar advances by one for each. False at the first that fails.
bool ConvertCollectors(ExportContext& context);

} // namespace tq4x
