#pragma once

#include <xsi_x3dobject.h>

namespace XSI
{

/// A part of a skeleton chain.
class ChainElement : public X3DObject
{
public:
    ChainElement() = default;

    ChainElement(const CRef& ref) : X3DObject(ref.As(siChainElementID)) {}
};

/// Where a chain starts.
class ChainRoot : public ChainElement
{
public:
    ChainRoot() = default;

    ChainRoot(const CRef& ref) : ChainElement(ref.As(siChainRootID)) {}
};

/// A bone of a chain.
class ChainBone : public ChainElement
{
public:
    ChainBone() = default;

    ChainBone(const CRef& ref) : ChainElement(ref.As(siChainBoneID)) {}
};

/// Where a chain ends.
class ChainEffector : public ChainElement
{
public:
    ChainEffector() = default;

    ChainEffector(const CRef& ref) : ChainElement(ref.As(siChainEffectorID)) {}
};

} // namespace XSI
