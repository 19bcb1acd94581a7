#pragma once

#include <xsi_doublearray.h>
#include <xsi_projectitem.h>

namespace XSI
{

/// What ties the vertices of a mesh to the objects that move it.
class Envelope : public ProjectItem
{
public:
    Envelope() = default;

    Envelope(const CRef& ref) : ProjectItem(ref.As(siEnvelopeID)) {}

    /// The objects that move the mesh, in order.
    CRefArray GetDeformers() const;

    /// The weights of one deformer in percent, one per vertex; empty if it isn't one.
    CDoubleArray GetDeformerWeights(const CRef& deformer, double time = CurrentTime) const;

    /// All weights in percent: for each vertex one per deformer.
    CDoubleArray GetWeights(double time = CurrentTime) const;
};

} // namespace XSI
