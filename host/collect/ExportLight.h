#pragma once

#include "collect/ExportX3DObject.h"

namespace XSI
{
class Shader;
}

namespace tq4x
{

struct Light;

/// The collector of a light: a node, and a `Light` unless it is hidden for good or of a kind that the files
/// don't know.
class ExportLight : public ExportNode
{
public:
    using ExportNode::ExportNode;

    CollectorKind GetKind() const override { return CollectorKind::Light; }

    bool IsKindOf(CollectorKind kind) const override
    {
        return kind == CollectorKind::Light || ExportNode::IsKindOf(kind);
    }

    bool Export() override;

private:
    void ReadLightColors(Light& light, const XSI::Shader& shader) const;
    void ReadSpotCone(Light& light, const XSI::Shader& shader);
    void ReadLightTransform(Light& light) const;
    void ReadLightVisibility(Light& light) const;
};

} // namespace tq4x
