#pragma once

#include "collect/ExportX3DObject.h"

#include <xsi_parameter.h>
#include <xsi_x3dobject.h>

namespace tq4x
{

struct Camera;

/// The collector of a camera: a node, and a `Camera` unless it is hidden for good.
class ExportCamera : public ExportNode
{
public:
    using ExportNode::ExportNode;

    CollectorKind GetKind() const override { return CollectorKind::Camera; }

    bool IsKindOf(CollectorKind kind) const override
    {
        return kind == CollectorKind::Camera || ExportNode::IsKindOf(kind);
    }

    bool Export() override;

private:
    /// What the view follows.
    struct View
    {
        XSI::X3DObject Target;
        XSI::X3DObject Up;
        XSI::Parameter Roll; ///< degrees
    };

    void ReadProjection();
    void ReadView();
    void ResolveBranchVisibility();
    View FindView() const;
    void SampleView(const View& view, double frame);
    void SetStaticView(const View& view, double frame);
    float ReadFieldOfView(double frame, float ratio) const;

    Camera* m_camera = nullptr;
};

} // namespace tq4x
