#pragma once

#include <string>
#include <vector>

namespace tq4x::gltf
{

enum class NoteSeverity
{
    Warning, ///< the result differs from what the scene shows
    Information,
};

/// Something that was not taken over from a scene, or not as it stands. Opening goes on.
struct Note
{
    NoteSeverity Severity = NoteSeverity::Warning;
    std::string Object; ///< the thing it is about: its name, or its JSON pointer; empty: the scene
    std::string Text;   ///< a whole sentence
};

using Notes = std::vector<Note>;

} // namespace tq4x::gltf
