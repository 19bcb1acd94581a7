#pragma once

namespace tq4x
{

class XmlWriter;
struct Bone;
struct SeparateDataShape;
struct SkeletalModelWriter;

/// Writes `Shapes` at the given level: every shape of every mesh entry, in entry order and by ascending
/// material index.
void WriteShapes(const SkeletalModelWriter& content, XmlWriter& stream, int level);

/// Writes one `SeparateDataShapeQtr` at the stream's level. `bone` carries the shape's mesh. `magnify` scales
/// positions and their offset, never the bounding box.
///
/// A shape of more vertices than an unsigned short can number is written with its true numbers, and a warning
/// names the mesh.
void WriteShape(const SeparateDataShape& shape, XmlWriter& stream, const Bone& bone, float magnify);

} // namespace tq4x
