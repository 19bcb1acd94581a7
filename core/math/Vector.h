#pragma once

namespace tq4x
{

/// Two single-precision components: texture coordinates.
struct Vector2
{
    float X = 0.0f;
    float Y = 0.0f;

    bool operator==(const Vector2&) const = default;
};

/// Three single-precision components: positions, normals, scales, Euler angles.
struct Vector3
{
    float X = 0.0f;
    float Y = 0.0f;
    float Z = 0.0f;

    bool operator==(const Vector3&) const = default;
};

/// Four single-precision components: vertex colours, user attributes, bone weights.
struct Vector4
{
    float X = 0.0f;
    float Y = 0.0f;
    float Z = 0.0f;
    float W = 0.0f;

    bool operator==(const Vector4&) const = default;
};

/// Linear RGBA colour as the files hold it.
struct Color
{
    float R = 0.0f;
    float G = 0.0f;
    float B = 0.0f;
    float A = 0.0f;

    bool operator==(const Color&) const = default;
};

} // namespace tq4x
