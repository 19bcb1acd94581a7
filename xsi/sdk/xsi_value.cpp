#include <xsi_value.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "scene/Text.h"

namespace XSI
{

namespace
{

/// A number cut towards zero and held within an integer type; what is no number gives 0.
template<class Integer>
Integer CutNumber(double number)
{
    if (std::isnan(number)) {
        return 0;
    }
    constexpr double lowest = static_cast<double>(std::numeric_limits<Integer>::lowest());
    constexpr double largest = static_cast<double>(std::numeric_limits<Integer>::max());
    return static_cast<Integer>(std::clamp(number, lowest, largest));
}

/// A number held within single precision; infinity stays infinity.
float NarrowNumber(double number)
{
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::isinf(number) ? number : std::clamp(number, -largest, largest));
}

bool IsTrueText(const CString& text)
{
    const std::optional<double> number = Host::NumberAtStart(text);
    return text.IsEqualNoCase(L"true") || (number && *number != 0.0);
}

} // namespace

CValueArray::CValueArray() = default;

CValueArray::CValueArray(LONG count)
{
    Resize(count);
}

CValueArray::CValueArray(const CValueArray& other) = default;
CValueArray::CValueArray(CValueArray&& other) noexcept = default;
CValueArray& CValueArray::operator=(const CValueArray& other) = default;
CValueArray& CValueArray::operator=(CValueArray&& other) noexcept = default;
CValueArray::~CValueArray() = default;

LONG CValueArray::GetCount() const
{
    return static_cast<LONG>(m_values.size());
}

void CValueArray::Resize(LONG count)
{
    m_values.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
}

void CValueArray::Clear()
{
    m_values.clear();
}

LONG CValueArray::Add(const CValue& value)
{
    m_values.push_back(value);
    return GetCount() - 1;
}

const CValue& CValueArray::operator[](LONG index) const
{
    static const CValue none;
    return index >= 0 && index < GetCount() ? m_values[static_cast<std::size_t>(index)] : none;
}

CValue& CValueArray::operator[](LONG index)
{
    static CValue spare;
    if (index >= 0 && index < GetCount()) {
        return m_values[static_cast<std::size_t>(index)];
    }
    spare = CValue();
    return spare;
}

CValue::DataType CValue::GetType() const
{
    // In the order of the variant's alternatives.
    constexpr DataType types[] = {siEmpty,  siBool,   siInt4, siUInt4,    siFloat,
                                  siDouble, siString, siRef,  siRefArray, siArray};
    static_assert(std::size(types) == std::variant_size_v<decltype(m_value)>);
    return types[m_value.index()];
}

CValue::operator bool() const
{
    if (const auto* flag = std::get_if<bool>(&m_value)) {
        return *flag;
    }
    if (const auto* text = std::get_if<CString>(&m_value)) {
        return IsTrueText(*text);
    }
    return ToNumber() != 0.0;
}

CValue::operator LONG() const
{
    return CutNumber<LONG>(ToNumber());
}

CValue::operator ULONG() const
{
    return CutNumber<ULONG>(ToNumber());
}

CValue::operator float() const
{
    const auto* single = std::get_if<float>(&m_value);
    return single != nullptr ? *single : NarrowNumber(ToNumber());
}

CValue::operator double() const
{
    return ToNumber();
}

CValue::operator CString() const
{
    const auto* text = std::get_if<CString>(&m_value);
    return text != nullptr ? *text : GetAsText();
}

CValue::operator CRef() const
{
    if (const auto* ref = std::get_if<CRef>(&m_value)) {
        return *ref;
    }
    const auto* refs = std::get_if<CRefArray>(&m_value);
    return refs != nullptr ? refs->GetItem(0) : CRef();
}

CValue::operator CRefArray() const
{
    if (const auto* refs = std::get_if<CRefArray>(&m_value)) {
        return *refs;
    }
    CRefArray list;
    if (const auto* ref = std::get_if<CRef>(&m_value)) {
        list.Add(*ref);
    } else if (const auto* values = std::get_if<CValueArray>(&m_value)) {
        for (LONG i = 0; i < values->GetCount(); ++i) {
            const CRefArray more = (*values)[i];
            list += more;
        }
    }
    return list;
}

CValue::operator CValueArray() const
{
    if (const auto* values = std::get_if<CValueArray>(&m_value)) {
        return *values;
    }
    CValueArray list;
    if (const auto* refs = std::get_if<CRefArray>(&m_value)) {
        for (LONG i = 0; i < refs->GetCount(); ++i) {
            list.Add(refs->GetItem(i));
        }
    } else if (!IsEmpty()) {
        list.Add(*this);
    }
    return list;
}

CString CValue::GetAsText() const
{
    switch (GetType()) {
    case siEmpty:
        return CString();
    case siBool:
        return std::get<bool>(m_value) ? L"true" : L"false";
    case siInt4:
        return CString(std::get<LONG>(m_value));
    case siUInt4:
        return CString(std::get<ULONG>(m_value));
    case siFloat:
        return CString(std::get<float>(m_value));
    case siDouble:
        return CString(std::get<double>(m_value));
    case siString:
        return std::get<CString>(m_value);
    case siRef:
        return std::get<CRef>(m_value).GetAsText();
    case siRefArray:
        return std::get<CRefArray>(m_value).GetAsText();
    case siArray:
        break;
    }
    CString text;
    const CValueArray& values = std::get<CValueArray>(m_value);
    for (LONG i = 0; i < values.GetCount(); ++i) {
        text += i > 0 ? L"," : L"";
        text += values[i].GetAsText();
    }
    return text;
}

CValue CValue::ConvertTo(DataType type) const
{
    switch (type) {
    case siEmpty:
        return CValue();
    case siBool:
        return static_cast<bool>(*this);
    case siInt4:
        return static_cast<LONG>(*this);
    case siUInt4:
        return static_cast<ULONG>(*this);
    case siFloat:
        return static_cast<float>(*this);
    case siDouble:
        return static_cast<double>(*this);
    case siString: {
        const CString text = *this;
        return text;
    }
    case siRef: {
        const CRef ref = *this;
        return ref;
    }
    case siRefArray: {
        const CRefArray refs = *this;
        return refs;
    }
    case siArray: {
        const CValueArray values = *this;
        return values;
    }
    }
    return CValue();
}

CValue CValue::FromSigned(long long value)
{
    constexpr long long lowest = std::numeric_limits<int>::lowest();
    constexpr long long largest = std::numeric_limits<int>::max();
    return CValue(static_cast<int>(std::clamp(value, lowest, largest)));
}

CValue CValue::FromUnsigned(unsigned long long value)
{
    constexpr unsigned long long largest = std::numeric_limits<unsigned>::max();
    CValue result;
    result.m_value = static_cast<ULONG>(std::min(value, largest));
    return result;
}

bool CValue::IsSame(const CValue& other) const
{
    if (GetType() != other.GetType()) {
        return false;
    }
    switch (GetType()) {
    case siEmpty:
        return true;
    case siBool:
        return std::get<bool>(m_value) == std::get<bool>(other.m_value);
    case siInt4:
        return std::get<LONG>(m_value) == std::get<LONG>(other.m_value);
    case siUInt4:
        return std::get<ULONG>(m_value) == std::get<ULONG>(other.m_value);
    case siFloat:
        return std::get<float>(m_value) == std::get<float>(other.m_value);
    case siDouble:
        return std::get<double>(m_value) == std::get<double>(other.m_value);
    case siString:
        return std::get<CString>(m_value) == std::get<CString>(other.m_value);
    case siRef:
        return std::get<CRef>(m_value) == std::get<CRef>(other.m_value);
    case siRefArray:
    case siArray:
        break;
    }
    const CValueArray values = *this;
    const CValueArray others = other;
    if (values.GetCount() != others.GetCount()) {
        return false;
    }
    for (LONG i = 0; i < values.GetCount(); ++i) {
        if (!(values[i] == others[i])) {
            return false;
        }
    }
    return true;
}

double CValue::ToNumber() const
{
    switch (GetType()) {
    case siBool:
        return std::get<bool>(m_value) ? 1.0 : 0.0;
    case siInt4:
        return static_cast<double>(std::get<LONG>(m_value));
    case siUInt4:
        return static_cast<double>(std::get<ULONG>(m_value));
    case siFloat:
        return static_cast<double>(std::get<float>(m_value));
    case siDouble:
        return std::get<double>(m_value);
    case siString: {
        const CString& text = std::get<CString>(m_value);
        return Host::NumberAtStart(text).value_or(text.IsEqualNoCase(L"true") ? 1.0 : 0.0);
    }
    case siEmpty:
    case siRef:
    case siRefArray:
    case siArray:
        break;
    }
    return 0.0;
}

} // namespace XSI
