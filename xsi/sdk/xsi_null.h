#pragma once

#include <xsi_x3dobject.h>

namespace XSI
{

/// A point in space, without geometry.
class Null : public X3DObject
{
public:
    Null() = default;

    Null(const CRef& ref) : X3DObject(ref.As(siNullID)) {}
};

} // namespace XSI
