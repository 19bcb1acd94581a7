#pragma once

namespace tq4x
{

struct Bone;
struct Camera;
struct Light;
struct Material;
struct MeshAttributes;

// True if all numbers that reach a file are finite. The writers print what they are given; the collectors
// tell which object a number came from that no reader can use.

/// Bind pose and samples.
bool AreFinite(const Bone& bone);

/// Static values and samples.
bool AreFinite(const Camera& camera);
bool AreFinite(const Light& light);

/// Colours, highlight, coordinators and samples.
bool AreFinite(const Material& material);

/// All lists, coordinate sets that no material uses included.
bool AreFinite(const MeshAttributes& attributes);

} // namespace tq4x
