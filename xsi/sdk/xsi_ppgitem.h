#pragma once

#include <xsi_siobject.h>
#include <xsi_value.h>

namespace XSI
{

// Attributes of page items.
inline constexpr const wchar_t* siUICaption = L"Caption";
inline constexpr const wchar_t* siUIClass = L"Class";
inline constexpr const wchar_t* siUIStyle = L"Style";
inline constexpr const wchar_t* siUINoLabel = L"NoLabel";
inline constexpr const wchar_t* siUICX = L"CX";
inline constexpr const wchar_t* siUICY = L"CY";
inline constexpr const wchar_t* siUIFont = L"Font";
inline constexpr const wchar_t* siUIFileFilter = L"FileFilter";
inline constexpr const wchar_t* siUIInitialDir = L"InitialDir";
inline constexpr const wchar_t* siUIOpenFile = L"OpenFile";
inline constexpr const wchar_t* siUIFileMustExist = L"FileMustExist";
inline constexpr const wchar_t* siUIButtonDisable = L"ButtonDisable";
inline constexpr const wchar_t* siUILabelMinPixels = L"LabelMinPixels";
inline constexpr const wchar_t* siUILabelPercentage = L"LabelPercentage";
inline constexpr const wchar_t* siUIWidthPercentage = L"WidthPercentage";

// Words of controls and of the layout's own marks.
inline constexpr const wchar_t* siControlDefault = L"";
inline constexpr const wchar_t* siControlBoolean = L"bool";
inline constexpr const wchar_t* siControlNumber = L"number";
inline constexpr const wchar_t* siControlString = L"string";
inline constexpr const wchar_t* siControlCombo = L"combo";
inline constexpr const wchar_t* siControlRadio = L"radio";
inline constexpr const wchar_t* siControlCheck = L"check";
inline constexpr const wchar_t* siControlListBox = L"listbox";
inline constexpr const wchar_t* siControlFilePath = L"file";
inline constexpr const wchar_t* siControlFolder = L"folder";
inline constexpr const wchar_t* siControlDSControl = L"dscontrol";
inline constexpr const wchar_t* siControlButton = L"button";
inline constexpr const wchar_t* siControlStatic = L"static";
inline constexpr const wchar_t* siControlSpacer = L"spacer";
inline constexpr const wchar_t* siControlGroup = L"group";
inline constexpr const wchar_t* siControlEndGroup = L"endgroup";
inline constexpr const wchar_t* siControlRow = L"row";
inline constexpr const wchar_t* siControlEndRow = L"endrow";
inline constexpr const wchar_t* siControlTab = L"tab";

/// One control of a page's layout.
class PPGItem : public SIObject
{
public:
    PPGItem() = default;

    PPGItem(const CRef& ref) : SIObject(ref.As(siPPGItemID)) {}

    /// The control's word; a group, a row and their ends are items too. GetName gives the parameter or
    /// button.
    CString GetType() const;
    CStatus PutType(const CString& type);

    CString GetLabel() const;
    CStatus PutLabel(const CString& label);

    /// What a list offers: text, value, text, value, ...
    CValueArray GetUIItems() const;
    CStatus PutUIItems(const CValueArray& items);

    /// Empty if there is none.
    CValue GetAttribute(const CString& name) const;
    CStatus PutAttribute(const CString& name, const CValue& value);

    CStatus PutLabelMinPixels(LONG pixels) { return PutAttribute(siUILabelMinPixels, pixels); }

    CStatus PutLabelPercentage(LONG percentage) { return PutAttribute(siUILabelPercentage, percentage); }

    CStatus PutWidthPercentage(LONG percentage) { return PutAttribute(siUIWidthPercentage, percentage); }
};

} // namespace XSI
