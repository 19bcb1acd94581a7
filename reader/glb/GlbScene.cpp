#include "glb/GlbScene.h"

#include "glb/NodeMath.h"

namespace tq4x::reader
{

Json NumberList(std::span<const float> values)
{
    Json list = Json::array();
    for (const float value : values) {
        list.push_back(ShortNumber(value));
    }
    return list;
}

void SetTransform(Json& node, const Transform& transform)
{
    const Transform identity;
    if (transform.Translate != identity.Translate) {
        node["translation"] = NumberList(transform.Translate);
    }
    if (transform.Rotate != identity.Rotate) {
        node["rotation"] = NumberList(ToFloats(QuaternionOf(transform.Rotate)));
    }
    if (transform.Scale != identity.Scale) {
        node["scale"] = NumberList(transform.Scale);
    }
}

} // namespace tq4x::reader
