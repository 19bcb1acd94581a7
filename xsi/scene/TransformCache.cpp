#include "scene/TransformCache.h"

#include <algorithm>

#include "scene/ParameterValues.h"

namespace XSI::Host
{

namespace
{

using MATH::CMatrix4;
using MATH::CTransformation;
using MATH::CVector3;

bool UsesHierarchicalScaling(const Database& database, const NodeObject& node, double frame)
{
    const auto* rule = database.Find<ParameterObject>(node.ScalingRule);
    return rule != nullptr && static_cast<bool>(ValueAt(*rule, frame));
}

CMatrix4 ScaleHierarchically(const CTransformation& local, const CMatrix4& parentMatrix)
{
    const CTransformation parent(parentMatrix);
    const CVector3 a = local.GetScaling();
    const CVector3 b = parent.GetScaling();
    MATH::CRotation rotation = local.GetRotation();
    CTransformation global;
    global.SetScalingFromValues(a[0] * b[0], a[1] * b[1], a[2] * b[2]);
    global.SetRotation(rotation.MulInPlace(parent.GetRotation()));
    global.SetTranslation(local.GetTranslation().MulByMatrix4InPlace(parentMatrix));
    return global.GetMatrix4();
}

} // namespace

CTransformation LocalTransform(const NodeObject& node, double frame)
{
    return node.LocalSource ? node.LocalSource(frame) : node.Local;
}

CMatrix4 TransformCache::Global(const Database& database, NodeObject& node, double frame)
{
    if (m_revision != database.TransformRevision()) {
        Clear(database);
    }
    std::vector<NodeObject*> missing;
    CMatrix4 global;
    for (NodeObject* at = &node; at != nullptr; at = database.Find<NodeObject>(at->Parent)) {
        if (const CMatrix4* stored = FindStored(*at, frame)) {
            global = *stored;
            break;
        }
        missing.push_back(at);
    }
    for (auto at = missing.rbegin(); at != missing.rend(); ++at) {
        const CTransformation local = LocalTransform(**at, frame);
        if (UsesHierarchicalScaling(database, **at, frame)) {
            global = ScaleHierarchically(local, global);
        } else {
            global = CMatrix4().Mul(local.GetMatrix4(), global);
        }
        Store(database, **at, frame, global);
    }
    return global;
}

const CMatrix4* TransformCache::FindStored(NodeObject& node, double frame)
{
    if (node.Track == nullptr) {
        return nullptr;
    }
    const GlobalTrack& track = *node.Track;
    const auto found = std::lower_bound(track.Frames.begin(), track.Frames.end(), frame);
    if (found == track.Frames.end() || *found != frame) {
        return nullptr;
    }
    m_uses.splice(m_uses.begin(), m_uses, track.Use);
    return &track.Matrices[static_cast<std::size_t>(found - track.Frames.begin())];
}

void TransformCache::Store(const Database& database, NodeObject& node, double frame, const CMatrix4& matrix)
{
    if (node.Track == nullptr) {
        node.Track = std::make_unique<GlobalTrack>();
        node.Track->Use = m_uses.insert(m_uses.begin(), node.Id);
    }
    GlobalTrack& track = *node.Track;
    const auto place = std::lower_bound(track.Frames.begin(), track.Frames.end(), frame);
    if (place != track.Frames.end() && *place == frame) {
        return; // a source that asked for this node in between
    }
    track.Matrices.insert(track.Matrices.begin() + (place - track.Frames.begin()), matrix);
    track.Frames.insert(place, frame);
    ++m_stored;
    while (m_stored > m_budget) {
        DropOldest(database);
    }
}

void TransformCache::DropOldest(const Database& database)
{
    if (auto* node = database.Find<NodeObject>(m_uses.back())) {
        m_stored -= node->Track->Frames.size();
        node->Track.reset();
    }
    m_uses.pop_back();
}

void TransformCache::Clear(const Database& database)
{
    for (const ObjectId id : m_uses) {
        if (auto* node = database.Find<NodeObject>(id)) {
            node->Track.reset();
        }
    }
    m_uses.clear();
    m_stored = 0;
    m_revision = database.TransformRevision();
}

} // namespace XSI::Host
