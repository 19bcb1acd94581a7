#pragma once

namespace tq4x
{

struct Bone;
struct Mesh;

/// Moves a mesh that only one bone moves over to that bone: influences at 0 percent do not count. The shapes
/// go into the bone's space in the bind pose, the weights are dropped, and the visibility of `meshBone`
/// overwrites the bone's. `meshBone` stays in the tree, without a mesh; it may be the very bone.
///
/// If the bone has an unskinned mesh already, the shapes join that one, and this mesh is left without shapes,
/// carried by nobody; where both have a shape of one material, the newcomer's is lost.
///
/// False, with nothing changed, for a mesh without weights, with no influence above 0 or with influences of
/// several bones, and if the bone has a skinned mesh already.
bool ReHomeSingleBoneMesh(Mesh& mesh, Bone& meshBone);

} // namespace tq4x
