#pragma once

namespace tq4x
{

struct Bone;
struct Mesh;

/// Marks the bones that the drawing of a mesh needs: the bone that carries it, if it is unskinned, else the
/// bones of all influences of the vertices in use, which also take the mesh as their `SkinOwner`.
void MarkNeededBones(Mesh& mesh, Bone& bone);

} // namespace tq4x
