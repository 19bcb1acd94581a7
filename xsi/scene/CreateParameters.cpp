#include "scene/CreateParameters.h"

#include <xsi_shader.h>

#include "scene/ParameterValues.h"
#include "scene/Session.h"

namespace XSI::Host
{

namespace
{

ParameterObject& CreateParameter(const Object& owner, std::string_view name,
                                 std::shared_ptr<const ParameterDefinition> definition, LONG capabilities)
{
    const bool isShaders = RefOf(owner).IsA(siShaderID);
    const siClassID classId = isShaders ? siShaderParameterID : siParameterID;
    auto& parameter = Objects().Create<ParameterObject>(classId, name, {}, owner.Id);
    parameter.Value = definition->Default;
    parameter.Definition = std::move(definition);
    parameter.Capabilities = capabilities;
    return parameter;
}

Parameter AddShared(ItemObject& owner, std::string_view name,
                    std::shared_ptr<const ParameterDefinition> definition, LONG capabilities)
{
    const ParameterObject& parameter = CreateParameter(owner, name, std::move(definition), capabilities);
    owner.Parameters.push_back(parameter.Id);
    return RefOf(parameter);
}

std::shared_ptr<const ParameterDefinition> MakeDefinition(const CValue& value)
{
    ParameterDefinition definition;
    definition.Type = value.GetType();
    definition.Default = value;
    return std::make_shared<const ParameterDefinition>(definition);
}

/// Flags are what every object of a big scene has, so that these share their definitions.
std::shared_ptr<const ParameterDefinition> DefinitionOf(const CValue& value)
{
    static const auto on = MakeDefinition(true);
    static const auto off = MakeDefinition(false);
    return value.GetType() != CValue::siBool ? MakeDefinition(value) : static_cast<bool>(value) ? on : off;
}

Parameter FindParameter(const CRef& owner, std::string_view name)
{
    return ProjectItem(owner).GetParameter(FromUtf8(name));
}

/// Adds the source's object, which GetSource answers.
void SetFunction(const Parameter& parameter, siSourceType kind, siClassID classId, const char* name,
                 std::function<double(double)> evaluate)
{
    RemoveSource(parameter);
    auto* object = Objects().Find<ParameterObject>(parameter);
    if (object == nullptr) {
        return;
    }
    const auto& source = Objects().Create<ItemObject>(classId, name, name, object->Id);
    object->Nested.push_back(source.Id);
    object->Driver =
        std::make_unique<ParameterSource>(ParameterSource{kind, RefOf(source), std::move(evaluate)});
    Objects().TouchTransforms();
}

void AddKnownParameters(const CRef& property, std::string_view type)
{
    if (type == "visibility") {
        AddParameter(property, "viewvis", true);
        AddParameter(property, "rendvis", true);
    } else if (type == "geomapprox") {
        AddParameter(property, "gapproxmoad", true);
        AddParameter(property, "gapproxmoan", 60.0);
        AddParameter(property, "gapproxmosl", 0);
    }
}

} // namespace

Parameter AddParameter(const CRef& owner, std::string_view name, const CValue& value)
{
    Parameter existing = FindParameter(owner, name);
    if (existing.IsValid()) {
        existing.PutValue(value);
        return existing;
    }
    auto* item = Objects().Find<ItemObject>(owner);
    return item != nullptr ? AddShared(*item, name, DefinitionOf(value), siAnimatable | siPersistable)
                           : Parameter();
}

Parameter AddParameter(const CRef& owner, std::string_view name, const ParameterDefinition& definition,
                       LONG capabilities)
{
    auto* item = Objects().Find<ItemObject>(owner);
    if (item == nullptr || FindParameter(owner, name).IsValid()) {
        return Parameter();
    }
    auto shared = std::make_shared<const ParameterDefinition>(definition);
    return AddShared(*item, name, std::move(shared), capabilities);
}

Parameter AddColorParameter(const CRef& owner, std::string_view name, double red, double green, double blue,
                            double alpha)
{
    const Parameter color = AddParameter(owner, name, red);
    auto* object = Objects().Find<ParameterObject>(color);
    if (object == nullptr || !object->Components.empty()) {
        return color;
    }
    static const auto component = std::make_shared<const ParameterDefinition>(
        ParameterDefinition{CValue::siDouble, 0.0, {}, {}, 0.0, 1.0, {}, {}});
    for (const char* componentName : {"red", "green", "blue", "alpha"}) {
        const ParameterObject& made =
            CreateParameter(*object, componentName, component, siAnimatable | siPersistable);
        object->Components.push_back(made.Id);
    }
    SetColor(color, red, green, blue, alpha);
    return color;
}

void SetColor(const Parameter& color, double red, double green, double blue, double alpha)
{
    color.GetParameter(L"red").PutValue(red);
    color.GetParameter(L"green").PutValue(green);
    color.GetParameter(L"blue").PutValue(blue);
    color.GetParameter(L"alpha").PutValue(alpha);
}

void SetCurve(const Parameter& parameter, Curve curve)
{
    SetCurveFunction(parameter, [kept = std::move(curve)](double frame) { return kept.Evaluate(frame); });
}

void SetCurveFunction(const Parameter& parameter, std::function<double(double)> evaluate)
{
    SetFunction(parameter, siFCurveSource, siFCurveID, "fcurve", std::move(evaluate));
}

void SetExpression(const Parameter& parameter, std::function<double(double)> evaluate)
{
    SetFunction(parameter, siExpressionSource, siExpressionID, "expression", std::move(evaluate));
}

void ConnectShader(const Parameter& port, const CRef& shader)
{
    RemoveSource(port);
    if (auto* object = Objects().Find<ParameterObject>(port)) {
        object->Driver = std::make_unique<ParameterSource>(ParameterSource{siShaderSource, shader, {}});
    }
}

void RemoveSource(const Parameter& parameter)
{
    auto* object = Objects().Find<ParameterObject>(parameter);
    if (object == nullptr || object->Driver == nullptr) {
        return;
    }
    const CRef source = object->Driver->Source;
    const bool isOwned = object->Driver->Kind != siShaderSource;
    object->Driver.reset();
    if (isOwned) {
        Objects().Delete(source.GetObjectID());
    }
    Objects().TouchTransforms();
}

Property AddProperty(const CRef& owner, std::string_view type, std::string_view name)
{
    auto* item = Objects().Find<ItemObject>(owner);
    if (item == nullptr) {
        return Property();
    }
    const auto& property =
        Objects().Create<ItemObject>(siPropertyID, name.empty() ? type : name, type, item->Id);
    item->Properties.push_back(property.Id);
    AddKnownParameters(RefOf(property), type);
    return RefOf(property);
}

Property FindProperty(const CRef& owner, std::string_view type)
{
    const auto* item = Objects().Find<ItemObject>(owner);
    if (item == nullptr) {
        return Property();
    }
    for (const ObjectId id : item->Properties) {
        if (const Object* property = Objects().Find(id); property != nullptr && property->Type == type) {
            return RefOf(*property);
        }
    }
    return Property();
}

} // namespace XSI::Host
