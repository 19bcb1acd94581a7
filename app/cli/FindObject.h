#pragma once

#include <string>

#include <xsi_ref.h>

namespace tq4x::cli
{

/// An object of the open scene, or a sentence that says why there is none.
struct FoundObject
{
    XSI::CRef Object;
    std::string Error;
};

/// Finds an object by its name, or by as much of its path as is needed to tell it from others: "hand",
/// "left/arm/hand". The nearest name is proposed for one that does not exist.
[[nodiscard]] FoundObject FindObject(const std::string& name);

/// The path of a 3D object from below the scene root, "left/arm/hand"; of a deep one its last part.
[[nodiscard]] std::string PathOf(const XSI::CRef& object);

} // namespace tq4x::cli
