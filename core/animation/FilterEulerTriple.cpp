#include "animation/FilterEulerTriple.h"

#include "math/Vector.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>

namespace tq4x
{
namespace
{

/// Another form of an orientation: X and Z are moved, Y is moved or reflected at zero and then moved.
struct EulerForm
{
    std::int16_t X;
    bool IsYNegated;
    std::int16_t Y;
    std::int16_t Z;
};

/// In the order in which they are tried; of equally near forms the first wins. Results depend on this
/// very table: row 18, which is another orientation, and rows 64 to 69, which repeat 40 to 45, belong to it.
constexpr EulerForm Forms[] = {
    // 0 to 5
    {360, false, 0, 0},
    {0, false, 360, 0},
    {0, false, 0, 360},
    {-360, false, 0, 0},
    {0, false, -360, 0},
    {0, false, 0, -360},
    // 6 to 11
    {360, false, 360, 0},
    {0, false, 360, 360},
    {360, false, 0, 360},
    {-360, false, -360, 0},
    {0, false, -360, -360},
    {-360, false, 0, -360},
    // 12 to 17
    {-360, false, 360, 360},
    {360, false, -360, 360},
    {360, false, 360, -360},
    {-360, false, -360, 360},
    {360, false, -360, -360},
    {-360, false, 360, -360},
    // 18
    {360, false, 0, 720},
    // 19 to 23
    {180, true, 180, 180},
    {-180, true, 180, 180},
    {180, true, 180, -180},
    {-180, true, -180, -180},
    {-180, true, 180, -180},
    // 24 to 27
    {180, true, -180, -180},
    {-180, true, -180, 180},
    {180, true, -180, 180},
    {-180, true, -180, -180},
    // 28 to 33
    {180, true, 540, 540},
    {540, true, 180, 540},
    {540, true, 540, 180},
    {180, true, 180, 540},
    {540, true, 180, 180},
    {180, true, 540, 180},
    // 34 to 39
    {-180, true, 540, 540},
    {-540, true, 180, 540},
    {-540, true, 540, 180},
    {-180, true, 180, 540},
    {-540, true, 180, 180},
    {-180, true, 540, 180},
    // 40 to 45
    {180, true, -540, -540},
    {540, true, -180, -540},
    {540, true, -540, -180},
    {180, true, -180, -540},
    {540, true, -180, -180},
    {180, true, -540, -180},
    // 46 to 51
    {180, true, 540, -540},
    {540, true, 180, -540},
    {540, true, 540, -180},
    {180, true, 180, -540},
    {540, true, 180, -180},
    {180, true, 540, -180},
    // 52 to 57
    {-180, true, -540, -540},
    {-540, true, -180, -540},
    {-540, true, -540, -180},
    {-180, true, -180, -540},
    {-540, true, -180, -180},
    {-180, true, -540, -180},
    // 58 to 63
    {-180, true, 540, -540},
    {-540, true, 180, -540},
    {-540, true, 540, -180},
    {-180, true, 180, -540},
    {-540, true, 180, -180},
    {-180, true, 540, -180},
    // 64 to 69
    {180, true, -540, -540},
    {540, true, -180, -540},
    {540, true, -540, -180},
    {180, true, -180, -540},
    {540, true, -180, -180},
    {180, true, -540, -180},
    // 70 to 74
    {540, true, 540, 540},
    {-540, true, 540, 540},
    {540, true, -540, -540},
    {-540, true, 540, -540},
    {540, true, -540, -540},
};
static_assert(std::size(Forms) == 75);

constexpr int MaximumPasses = 8;
constexpr float SmallStep = 90.0f; ///< degrees; a smaller change on all axes is taken for a motion

Vector3 Apply(const EulerForm& form, const Vector3& angles)
{
    const float y = static_cast<float>(form.Y);
    return {angles.X + static_cast<float>(form.X), form.IsYNegated ? y - angles.Y : angles.Y + y,
            angles.Z + static_cast<float>(form.Z)};
}

float Distance(const Vector3& a, const Vector3& b)
{
    return std::abs(a.Y - b.Y) + std::abs(a.X - b.X) + std::abs(a.Z - b.Z); // this order decides ties
}

bool IsSmallStep(const Vector3& a, const Vector3& b)
{
    return std::abs(a.X - b.X) < SmallStep && std::abs(a.Y - b.Y) < SmallStep &&
           std::abs(a.Z - b.Z) < SmallStep;
}

/// The form of `current` that lies nearest to `former`; nothing if no other is strictly nearer.
std::optional<Vector3> FindNearerForm(const Vector3& former, const Vector3& current)
{
    std::optional<Vector3> nearest;
    float best = Distance(current, former);
    for (const EulerForm& form : Forms) {
        const Vector3 candidate = Apply(form, current);
        const float distance = Distance(candidate, former);
        if (distance < best) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

bool IsConstant(std::span<const float> samples)
{
    return std::ranges::all_of(samples, [&](float sample) { return sample == samples.front(); });
}

struct TripleList
{
    std::span<float> X;
    std::span<float> Y;
    std::span<float> Z;

    Vector3 Get(std::size_t i) const { return {X[i], Y[i], Z[i]}; }

    void Set(std::size_t i, const Vector3& angles) const
    {
        X[i] = angles.X;
        Y[i] = angles.Y;
        Z[i] = angles.Z;
    }
};

bool FilterOnce(const TripleList& triples)
{
    bool changed = false;
    Vector3 former = triples.Get(0);
    for (std::size_t i = 1; i < triples.X.size(); ++i) {
        const Vector3 current = triples.Get(i);
        const auto nearer = IsSmallStep(current, former) ? std::nullopt : FindNearerForm(former, current);
        if (nearer) {
            triples.Set(i, *nearer);
            changed = true;
        }
        former = nearer.value_or(current);
    }
    return changed;
}

} // namespace

bool FilterEulerTriple(std::span<float> x, std::span<float> y, std::span<float> z)
{
    assert(y.size() == x.size() && z.size() == x.size());
    if (x.size() < 2 || (IsConstant(x) && IsConstant(y) && IsConstant(z)))
        return false;
    const TripleList triples{x, y, z};
    bool changed = false;
    for (int pass = 0; pass < MaximumPasses && FilterOnce(triples); ++pass)
        changed = true;
    return changed;
}

} // namespace tq4x
