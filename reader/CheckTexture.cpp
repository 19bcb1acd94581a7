#include <string>

#include "CheckSections.h"

namespace tq4x::reader
{

void CheckTexture(const Texture& texture, FindingList& findings)
{
    const std::size_t bits = static_cast<std::size_t>(BitsPerPixel(texture.Format));
    for (const TextureFace& face : texture.Faces) {
        if (static_cast<int>(face.Levels.size()) != texture.MipmapSize) {
            findings.Error("TQ-COUNT", texture.Line,
                           "MipmapSize says " + std::to_string(texture.MipmapSize) + ", a face has " +
                               std::to_string(face.Levels.size()) + " levels.");
        }
        for (const TextureLevel& level : face.Levels) {
            const std::size_t expected = level.Width * level.Height * bits / 8;
            if (level.Data.size() != expected) {
                findings.Error("TQ-TEXTURE-SIZE", level.Line,
                               std::to_string(level.Width) + " x " + std::to_string(level.Height) +
                                   " pixels of " + texture.Format + " take " + std::to_string(expected) +
                                   " bytes, there are " + std::to_string(level.Data.size()) + ".");
            }
        }
    }
    if (texture.IsCube && texture.Width != texture.Height) {
        findings.Error("TQ-TEXTURE-SIZE", texture.Line, "The faces of a cube must be square.");
    }
}

} // namespace tq4x::reader
