#include "scene/ParameterValues.h"

#include <algorithm>
#include <cmath>

#include "scene/Text.h"

namespace XSI::Host
{

namespace
{

bool IsNumberType(CValue::DataType type)
{
    return type == CValue::siInt4 || type == CValue::siUInt4 || type == CValue::siFloat ||
           type == CValue::siDouble;
}

bool CanConvert(const CValue& value, CValue::DataType type)
{
    if (type == CValue::siString || type == value.GetType()) {
        return !value.IsEmpty();
    }
    switch (value.GetType()) {
    case CValue::siBool:
    case CValue::siInt4:
    case CValue::siUInt4:
    case CValue::siFloat:
    case CValue::siDouble:
        return true;
    case CValue::siString:
        return type == CValue::siBool || (IsNumberType(type) && NumberAtStart(value).has_value());
    case CValue::siEmpty:
    case CValue::siRef:
    case CValue::siArray:
    case CValue::siRefArray:
        return false;
    }
    return false;
}

} // namespace

CValue ValueAt(const ParameterObject& parameter, double frame)
{
    if (parameter.Driver != nullptr && parameter.Driver->Evaluate) {
        return CValue(parameter.Driver->Evaluate(frame)).ConvertTo(parameter.Definition->Type);
    }
    return parameter.Value;
}

CValue FitValue(const ParameterDefinition& definition, const CValue& value)
{
    if (!CanConvert(value, definition.Type)) {
        return CValue();
    }
    if (!IsNumberType(definition.Type)) {
        return value.ConvertTo(definition.Type);
    }
    double number = value;
    if (std::isnan(number)) {
        return CValue();
    }
    if (!definition.Min.IsEmpty()) {
        number = std::max(number, static_cast<double>(definition.Min));
    }
    if (!definition.Max.IsEmpty()) {
        number = std::min(number, static_cast<double>(definition.Max));
    }
    return CValue(number).ConvertTo(definition.Type);
}

} // namespace XSI::Host
