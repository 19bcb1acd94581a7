#include "scene/Bone.h"

#include <utility>

namespace tq4x
{
namespace
{

/// Moves the children and the following siblings of a bone to the list of bones to release.
void TakeLinks(Bone& bone, std::vector<std::unique_ptr<Bone>>& pending)
{
    if (bone.FirstChild)
        pending.push_back(std::move(bone.FirstChild));
    if (bone.NextSibling)
        pending.push_back(std::move(bone.NextSibling));
}

} // namespace

Bone::~Bone()
{
    std::vector<std::unique_ptr<Bone>> pending;
    TakeLinks(*this, pending);
    while (!pending.empty()) {
        const std::unique_ptr<Bone> bone = std::move(pending.back());
        pending.pop_back();
        TakeLinks(*bone, pending);
    }
}

} // namespace tq4x
