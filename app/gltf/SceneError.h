#pragma once

#include <exception>
#include <string>
#include <utility>

namespace tq4x::gltf
{

/// Why a scene can't be opened. Thrown inside this folder only; the functions that open things turn it into a
/// returned text, so that no caller can pass over it.
class SceneError : public std::exception
{
public:
    /// `place` is a JSON pointer ("/meshes/3/primitives/0"), or empty where the file as a whole is meant.
    SceneError(std::string place, std::string text) : Place(std::move(place)), Text(std::move(text)) {}

    [[nodiscard]] const char* what() const noexcept override { return Text.c_str(); }

    std::string Place;
    std::string Text; ///< a whole sentence
};

} // namespace tq4x::gltf
