#include "gltf/CoordinateSets.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>

namespace tq4x::gltf
{
namespace
{

constexpr std::array<TextureSlot, 2> Slots = {TextureSlot::BaseColor, TextureSlot::Normal};

bool AnimatesTransform(const AnimationChannel& channel)
{
    return channel.Property == AnimatedProperty::TextureOffset ||
           channel.Property == AnimatedProperty::TextureRotation ||
           channel.Property == AnimatedProperty::TextureScale;
}

bool IsAnimated(const Animation* animation, std::size_t material, TextureSlot slot)
{
    return animation != nullptr &&
           std::ranges::any_of(animation->Channels, [=](const AnimationChannel& channel) {
               return AnimatesTransform(channel) && channel.Object == material && channel.Slot == slot;
           });
}

CoordinateSet SetFor(const Document& document, const TextureUse& use)
{
    CoordinateSet set;
    set.Attribute = use.CoordinateSet;
    set.Transform = use.Transform.value_or(TextureTransform());
    if (const Index sampler = document.Textures[use.Texture].Sampler) {
        set.WrapU = document.Samplers[*sampler].WrapS != Wrap::ClampToEdge;
        set.WrapV = document.Samplers[*sampler].WrapT != Wrap::ClampToEdge;
    }
    return set;
}

/// The set's place, after it was added if none suits.
std::size_t FindOrAdd(std::vector<CoordinateSet>& sets, CoordinateSet wanted)
{
    const auto found =
        std::ranges::find_if(sets, [&](const CoordinateSet& set) { return set.Suits(wanted); });
    if (found != sets.end()) {
        return static_cast<std::size_t>(found - sets.begin());
    }
    sets.push_back(std::move(wanted));
    return sets.size() - 1;
}

/// Pairs of sets of one attribute that stand on one mesh, both ways round.
std::vector<std::set<std::size_t>> FindNeighbours(const Document& document, const CoordinateSets& sets)
{
    std::vector<std::set<std::size_t>> neighbours(sets.Sets.size());
    for (const Mesh& mesh : document.Meshes) {
        std::set<std::size_t> onMesh;
        for (const Primitive& primitive : mesh.Primitives) {
            for (const Index set :
                 primitive.Material ? sets.OfMaterial[*primitive.Material] : std::array<Index, 2>()) {
                if (set) {
                    onMesh.insert(*set);
                }
            }
        }
        for (const std::size_t a : onMesh) {
            for (const std::size_t b : onMesh) {
                if (a != b && sets.Sets[a].Attribute == sets.Sets[b].Attribute) {
                    neighbours[a].insert(b);
                }
            }
        }
    }
    return neighbours;
}

std::string NameOf(std::size_t attribute, std::size_t number)
{
    return "TEXCOORD_" + std::to_string(attribute) + (number == 1 ? "" : "_" + std::to_string(number));
}

/// Each set takes the lowest number that none of its neighbours has.
void NameSets(const Document& document, CoordinateSets& sets)
{
    const auto neighbours = FindNeighbours(document, sets);
    for (std::size_t i = 0; i < sets.Sets.size(); ++i) {
        const auto isTaken = [&](const std::string& name) {
            return std::ranges::any_of(neighbours[i],
                                       [&](std::size_t k) { return sets.Sets[k].Name == name; });
        };
        std::size_t number = 1;
        while (isTaken(NameOf(sets.Sets[i].Attribute, number))) {
            ++number;
        }
        sets.Sets[i].Name = NameOf(sets.Sets[i].Attribute, number);
    }
}

double InverseScale(double scale)
{
    return std::abs(scale) * LargestScale > 1.0 ? 1.0 / scale : LargestScale;
}

} // namespace

bool CoordinateSet::Suits(const CoordinateSet& other) const
{
    return Attribute == other.Attribute && WrapU == other.WrapU && WrapV == other.WrapV &&
           Transform.Offset == other.Transform.Offset && Transform.Rotation == other.Transform.Rotation &&
           Transform.Scale == other.Transform.Scale && AnimatedMaterial == other.AnimatedMaterial &&
           AnimatedSlot == other.AnimatedSlot;
}

Index CoordinateSets::Find(std::size_t material, TextureSlot slot) const
{
    const auto place = std::ranges::find(Slots, slot);
    return place == Slots.end() ? Index()
                                : OfMaterial[material][static_cast<std::size_t>(place - Slots.begin())];
}

CoordinateSets BuildCoordinateSets(const Document& document, const Animation* animation)
{
    CoordinateSets sets;
    for (std::size_t i = 0; i < document.Materials.size(); ++i) {
        const Material& material = document.Materials[i];
        const std::array<const std::optional<TextureUse>*, 2> uses = {&material.BaseColorTexture,
                                                                      &material.NormalTexture};
        auto& places = sets.OfMaterial.emplace_back();
        for (std::size_t k = 0; k < uses.size(); ++k) {
            if (!uses[k]->has_value()) {
                continue;
            }
            CoordinateSet wanted = SetFor(document, **uses[k]);
            if (IsAnimated(animation, i, Slots[k])) {
                wanted.AnimatedMaterial = i;
                wanted.AnimatedSlot = Slots[k];
            }
            places[k] = FindOrAdd(sets.Sets, std::move(wanted));
        }
    }
    NameSets(document, sets);
    return sets;
}

// With v' = 1 - v the transform T + R(-r) * S of the file becomes b + R(r) * S. The projection wants its
// scales on the left: R(r) * S = S' * R(r'), which has a solution where S turns with R, that is for equal
// scales and for quarter turns. In between, the lengths of the rows of R * S keep at least the size of the
// picture right.
Projection ComputeProjection(const TextureTransform& transform)
{
    constexpr double Nothing = 1e-9;
    const double c = std::cos(transform.Rotation);
    const double s = std::sin(transform.Rotation);
    const auto [x, y] = transform.Scale;
    const double m[2][2] = {{c * x, -s * y}, {s * x, c * y}};
    const double base[2] = {transform.Offset[0] + s * y, 1.0 - transform.Offset[1] - c * y};
    Projection projection;
    projection.IsExact = std::abs(m[0][0] * m[1][0] + m[0][1] * m[1][1]) < Nothing;
    double angle = transform.Rotation;
    double scales[2] = {std::hypot(m[0][0], m[0][1]), std::hypot(m[1][0], m[1][1])};
    if (std::abs(s) < Nothing || x * y > 0.0) {
        // No turn, or scales of one sign: that sign goes to the scales, quarter turns exchange them.
        scales[0] = std::copysign(scales[0], std::abs(s) < Nothing ? x : y);
        scales[1] = std::copysign(scales[1], std::abs(s) < Nothing ? y : x);
    } else {
        // One axis is mirrored, so the turn before the mirror runs the other way.
        scales[0] = std::copysign(scales[0], x);
        scales[1] = std::copysign(scales[1], y);
        angle = -angle;
    }
    projection.ScaleU = InverseScale(scales[0]);
    projection.ScaleV = InverseScale(scales[1]);
    projection.Rotation = -angle * 180.0 / std::numbers::pi;
    // S' * R' * -T = b, so T = -R'^-1 * S'^-1 * b.
    const double u = base[0] * projection.ScaleU;
    const double v = base[1] * projection.ScaleV;
    const double cosAngle = std::cos(angle);
    const double sinAngle = std::sin(angle);
    projection.TranslateU = 0.0 - (cosAngle * u + sinAngle * v);
    projection.TranslateV = 0.0 - (cosAngle * v - sinAngle * u);
    return projection;
}

} // namespace tq4x::gltf
