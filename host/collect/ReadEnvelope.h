#pragma once

#include "collect/CollectorKey.h"
#include "collect/ReadMeshAttributes.h"
#include "geometry/SkinWeightTable.h"

#include <xsi_envelope.h>
#include <xsi_x3dobject.h>

#include <memory>
#include <string>

namespace tq4x
{

struct ExportContext;

/// The first envelope of an object's active primitive; invalid if it has none.
XSI::Envelope FindEnvelope(const XSI::X3DObject& object);

/// Reads the weights of an envelope: one entry per vertex, at most four influences that sum to 100. A vertex
/// whose weights do not reach 99.9, an array of another length or a deformer that is not exported gives the
/// mesh up. `instances` tells through which instances of models the deformers are looked for first.
ReadResult ReadEnvelope(const ExportContext& context, const XSI::Envelope& envelope,
                        const InstancePath& instances, std::size_t vertexCount, const std::string& name,
                        std::unique_ptr<SkinWeightTable>& table);

} // namespace tq4x
