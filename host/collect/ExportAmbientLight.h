#pragma once

#include "collect/ExportBase.h"

namespace tq4x
{

/// The collector of the scene's ambience, as a light of its own that belongs to no node.
class ExportAmbientLight : public ExportBase
{
public:
    using ExportBase::ExportBase;

    CollectorKind GetKind() const override { return CollectorKind::AmbientLight; }

    bool IsKindOf(CollectorKind kind) const override { return kind == CollectorKind::AmbientLight; }

    /// `Object` is the scene root. Always true.
    bool Export() override;
};

} // namespace tq4x
