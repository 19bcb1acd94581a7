#pragma once

#include <cstdint>
#include <list>

#include <xsi_transformation.h>

#include "scene/Database.h"

namespace XSI::Host
{

/// The local transformation of a node at a frame (not "the current time").
MATH::CTransformation LocalTransform(const NodeObject& node, double frame);

/// Global matrices, kept by node and frame: a chain of any depth is multiplied through once for each frame,
/// whether all nodes are asked for one frame or one node for all frames. What was not used for longest goes
/// first when the budget is spent; everything goes when the scene changes.
class TransformCache
{
public:
    /// The product of the local matrices from a node up to the root. A node with `siscaling` takes its
    /// position through the parent's whole matrix, but scalings are multiplied component by component and
    /// rotations without them.
    MATH::CMatrix4 Global(const Database& database, NodeObject& node, double frame);

    /// Matrices to keep at most; for tests.
    void SetBudget(std::size_t matrices) { m_budget = matrices; }

    std::size_t GetStoredCount() const { return m_stored; }

private:
    const MATH::CMatrix4* FindStored(NodeObject& node, double frame);
    void Store(const Database& database, NodeObject& node, double frame, const MATH::CMatrix4& matrix);
    void DropOldest(const Database& database);
    void Clear(const Database& database);

    std::list<ObjectId> m_uses; ///< Nodes with stored matrices, the last used first.
    std::size_t m_stored = 0;
    std::size_t m_budget = std::size_t{1} << 20;
    std::uint64_t m_revision = 0;
};

} // namespace XSI::Host
