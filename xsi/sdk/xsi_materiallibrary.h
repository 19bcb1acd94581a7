#pragma once

#include <xsi_projectitem.h>

namespace XSI
{

/// A named list of materials.
class MaterialLibrary : public ProjectItem
{
public:
    MaterialLibrary() = default;

    MaterialLibrary(const CRef& ref) : ProjectItem(ref.As(siMaterialLibraryID)) {}

    /// The materials, in order.
    CRefArray GetItems() const;
};

} // namespace XSI
