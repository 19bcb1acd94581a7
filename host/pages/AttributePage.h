#pragma once

#include "pages/PageParameters.h"
#include "pages/PageProperty.h"

#include <xsi_ref.h>
#include <xsi_status.h>

#include <span>

namespace tq4x
{

// The pages that mark objects and materials for the exporter all work alike: they hold values, show what is
// edited, and select what has values that were searched for. A page is a description.

/// A box that searches for one value.
struct SearchBox
{
    const char* Parameter;
    const char* Label;
    LONG Value;
};

/// The boxes for one value parameter. They are alternatives; a group without a box that is on takes no part.
struct SearchGroup
{
    const char* ValueParameter;
    const char* Caption; ///< empty: the boxes stand in the search block itself
    std::span<const SearchBox> Boxes;
};

/// Search of a number by comparison, in place of boxes.
struct NumberSearch
{
    const char* UseParameter;   ///< an object counts only if this flag of it is set
    const char* ValueParameter; ///< what is compared
    const char* IsCompared;     ///< off: every object that counts is found
    const char* Relation;       ///< 0 under, 1 below, 2 exactly, 3 above, 4 over
    PageParameter Number;       ///< what it is compared with
};

struct AttributePage
{
    const char* Type;
    PageCarrier Carrier = PageCarrier::Object;
    bool FindsMaterials = false; ///< a search selects materials instead of the objects that use them
    std::span<const PageParameter> Values = {};
    std::span<const SearchGroup> Groups = {}; ///< empty for pages that search by number
    const char* AndOr = nullptr;              ///< 0: an object must meet all groups, 1: one. Null: one group
    const NumberSearch* Number = nullptr;     ///< null for pages that search by boxes
    const char* SearchButton;
    const char* SelectList;
    void (*AddValueControls)(XSI::PPGLayout& layout);
    /// For what a page has of its own: called when a parameter changed that is not for searching.
    void (*OnValueChanged)(const XSI::CRefArray& properties, const XSI::CString& parameter) = nullptr;
};

// What the host's callbacks of a page do.
XSI::CStatus DefineAttributePage(const AttributePage& page, const XSI::CRef& context);
XSI::CStatus LayOutAttributePage(const AttributePage& page, const XSI::CRef& context);
XSI::CStatus HandleAttributePageEvent(const AttributePage& page, const XSI::CRef& context);

/// Opens the page on the selected objects, which get the property where they lack it; on the scene root's own
/// property if nothing that can carry it is selected.
XSI::CStatus OpenAttributePage(const AttributePage& page);

const AttributePage& BillboardPage();
const AttributePage& NoCompressPage();
const AttributePage& CombineGroupPage();
const AttributePage& ForceExportKeyPage();
const AttributePage& RenderPriorityPage();
const AttributePage& MaterialAttributePage();

} // namespace tq4x

/// The callbacks of a page under its type name.
#define TQ4X_ATTRIBUTE_PAGE_CALLBACKS(Type, Page)                                                            \
    SICALLBACK Type##_Define(XSI::CRef& context)                                                             \
    {                                                                                                        \
        return tq4x::DefineAttributePage(tq4x::Page(), context);                                             \
    }                                                                                                        \
    SICALLBACK Type##_DefineLayout(XSI::CRef& context)                                                       \
    {                                                                                                        \
        return tq4x::LayOutAttributePage(tq4x::Page(), context);                                             \
    }                                                                                                        \
    SICALLBACK Type##_PPGEvent(XSI::CRef& context)                                                           \
    {                                                                                                        \
        return tq4x::HandleAttributePageEvent(tq4x::Page(), context);                                        \
    }
