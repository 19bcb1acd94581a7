#pragma once

#include <xsi_x3dobject.h>

namespace XSI
{

/// The root of a branch with names of its own. An instance has no children of its own: it shows its master's.
class Model : public X3DObject
{
public:
    Model() = default;

    Model(const CRef& ref) : X3DObject(ref.As(siModelID)) {}

    siModelKind GetModelKind() const;

    /// The model whose content an instance shows; invalid for other models.
    Model GetInstanceMaster() const;
};

} // namespace XSI
