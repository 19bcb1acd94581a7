#pragma once

#include <concepts>
#include <variant>
#include <vector>

#include <xsi_decl.h>
#include <xsi_ref.h>
#include <xsi_string.h>

namespace XSI
{

class CValue;

/// List of values. As with all host arrays every index is safe.
class CValueArray
{
public:
    CValueArray();
    explicit CValueArray(LONG count);
    CValueArray(const CValueArray& other);
    CValueArray(CValueArray&& other) noexcept;
    CValueArray& operator=(const CValueArray& other);
    CValueArray& operator=(CValueArray&& other) noexcept;
    ~CValueArray();

    LONG GetCount() const;
    void Resize(LONG count);
    void Clear();
    LONG Add(const CValue& value);

    const CValue& operator[](LONG index) const;
    CValue& operator[](LONG index);

private:
    std::vector<CValue> m_values;
};

/// A value of any type that the host's commands and parameters know. The conversions never fail: numbers turn
/// into each other (doubles cut towards zero and held within the range), numbers and texts too; what has no
/// counterpart gives false, 0, or something empty.
class CValue
{
public:
    enum DataType
    {
        siEmpty = 0,
        siInt4 = 3,
        siFloat = 4,
        siDouble = 5,
        siString = 8,
        siRef = 9,
        siBool = 11,
        siUInt4 = 19,
        siArray = 20,
        siRefArray = 21,
    };

    CValue() = default;

    CValue(bool value) : m_value(value) {}

    CValue(int value) : m_value(static_cast<LONG>(value)) {}

    CValue(float value) : m_value(value) {}

    CValue(double value) : m_value(value) {}

    CValue(const CString& value) : m_value(value) {}

    CValue(const char* value) : m_value(CString(value)) {}

    CValue(const wchar_t* value) : m_value(CString(value)) {}

    CValue(const CRef& value) : m_value(value) {}

    CValue(const CRefArray& value) : m_value(value) {}

    CValue(const CValueArray& value) : m_value(value) {}

    /// Other integers: held within 32 bits, signed if the type is.
    template<std::signed_integral T>
    CValue(T value) : CValue(FromSigned(value))
    {}

    template<std::unsigned_integral T>
    CValue(T value) : CValue(FromUnsigned(value))
    {}

    template<class T>
    CValue(T*) = delete;

    DataType GetType() const;

    bool IsEmpty() const { return GetType() == siEmpty; }

    operator bool() const;
    operator LONG() const;
    operator ULONG() const;
#ifdef _WIN32
    operator int() const
    {
        return static_cast<int>(static_cast<LONG>(*this));
    } // LONG is another type there
#endif
    operator float() const;
    operator double() const;
    operator CString() const;
    operator CRef() const;
    /// A single reference is a list of one.
    operator CRefArray() const;
    /// A list of references is a list of values too; any other single value is a list of one, an empty value
    /// an empty list.
    operator CValueArray() const;

    /// The value as text: "true"/"false", numbers in their shortest form, full names; list entries joined by
    /// ",".
    CString GetAsText() const;

    /// The value, converted to another type by the rules above.
    CValue ConvertTo(DataType type) const;

    /// Same type and same value.
    friend bool operator==(const CValue& a, const CValue& b)
    {
        return a.IsSame(b);
    }

private:
    static CValue FromSigned(long long value);
    static CValue FromUnsigned(unsigned long long value);
    bool IsSame(const CValue& other) const;
    double ToNumber() const;

    std::variant<std::monostate, bool, LONG, ULONG, float, double, CString, CRef, CRefArray, CValueArray>
        m_value;
};

} // namespace XSI
