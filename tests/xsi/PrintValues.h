#pragma once

#include <ostream>
#include <string>
#include <vector>

#include <xsi_ref.h>
#include <xsi_siobject.h>
#include <xsi_status.h>
#include <xsi_value.h>

// What failure texts show, and short forms of what tests look at.

namespace XSI
{

inline void PrintTo(const CString& text, std::ostream* stream)
{
    *stream << '"' << text.GetAsciiString() << '"';
}

inline void PrintTo(const CStatus& status, std::ostream* stream)
{
    *stream << "status " << status.GetCode();
}

inline void PrintTo(const CRef& ref, std::ostream* stream)
{
    *stream << "#" << ref.GetObjectID() << " " << ref.GetAsText().GetAsciiString();
}

inline void PrintTo(const CValue& value, std::ostream* stream)
{
    *stream << value.GetAsText().GetAsciiString() << " (type " << value.GetType() << ")";
}

} // namespace XSI

namespace tq4x::test
{

inline std::string Text(const XSI::CString& text)
{
    return text.GetAsciiString();
}

/// The names of a list of objects.
inline std::vector<std::string> Names(const XSI::CRefArray& refs)
{
    std::vector<std::string> names;
    for (LONG i = 0; i < refs.GetCount(); ++i) {
        names.push_back(Text(XSI::SIObject(refs[i]).GetName()));
    }
    return names;
}

inline std::vector<std::string> Pieces(const XSI::CStringArray& texts)
{
    std::vector<std::string> pieces;
    for (LONG i = 0; i < texts.GetCount(); ++i) {
        pieces.push_back(Text(texts[i]));
    }
    return pieces;
}

template<class Value, class Array>
std::vector<Value> List(const Array& array)
{
    std::vector<Value> values;
    for (LONG i = 0; i < array.GetCount(); ++i) {
        values.push_back(array[i]);
    }
    return values;
}

} // namespace tq4x::test
