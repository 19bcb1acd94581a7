#include "scene/CustomProperties.h"

#include "scene/PluginLoader.h"
#include "scene/Session.h"

namespace XSI::Host
{

CustomProperty AddPlainProperty(const CRef& owner, std::string_view type, std::string_view name)
{
    auto* item = Objects().Find<ItemObject>(owner.As(siSceneItemID));
    if (item == nullptr) {
        return CustomProperty();
    }
    const auto& property = Objects().Create<ItemObject>(siCustomPropertyID, name, type, item->Id);
    item->Properties.push_back(property.Id);
    return RefOf(property);
}

CustomProperty AddDefinedProperty(const CRef& owner, std::string_view type, std::string_view name)
{
    const CustomProperty property = AddPlainProperty(owner, type, name);
    if (property.IsValid()) {
        CallbackCall call;
        call.Source = property;
        RunCallback(std::string(type) + "_Define", call);
    }
    return property;
}

} // namespace XSI::Host
