#pragma once

namespace tq4x
{

struct ExportContext;
struct ExportOptions;

/// Ties skinned meshes to the collectors of their influence objects, in both directions. False if an
/// influence object is not exported (all are reported), or if a model is wanted and nothing is there to be
/// one.
bool CheckLinks(ExportContext& context, const ExportOptions& options);

} // namespace tq4x
