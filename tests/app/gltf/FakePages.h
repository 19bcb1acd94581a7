#pragma once

#include <xsi_context.h>
#include <xsi_customproperty.h>
#include <xsi_parameter.h>
#include <xsi_pluginregistrar.h>

#include "scene/PluginLoader.h"

namespace tq4x::gltf::test
{

/// A plug-in in the place of ours, with a page for objects, one for materials, one for both and one for the
/// scene.
class FakePages
{
public:
    static void Load()
    {
        XSI::Host::LoadPlugin(XSI::Host::CallbackTable{
            {"XSILoadPlugin", Register},
            {"TQ4X_ForPennonBillboardProp_Define", DefineBillboard},
            {"TQ4X_ForPennonMaterialAttrProp_Define", DefineMaterial},
            {"TQ4X_ForPennonUserDataProp_Define", DefineUserData},
            {"TQ4X_ForPennonExportProp_Define", DefineExport},
        });
    }

private:
    static XSI::CStatus Register(XSI::CRef& plugin)
    {
        XSI::PluginRegistrar registrar(plugin);
        for (const char* const type : {"TQ4X_ForPennonBillboardProp", "TQ4X_ForPennonMaterialAttrProp",
                                       "TQ4X_ForPennonUserDataProp", "TQ4X_ForPennonExportProp"}) {
            registrar.RegisterProperty(type);
        }
        return XSI::CStatus::OK;
    }

    static void Add(XSI::CRef& context, const char* name, XSI::CValue::DataType type,
                    const XSI::CValue& initial, const XSI::CValue& least = {}, const XSI::CValue& most = {})
    {
        XSI::Parameter added;
        XSI::CustomProperty(XSI::Context(context).GetSource())
            .AddParameter(name, type, 4, "", "", initial, least, most, least, most, added);
    }

    static XSI::CStatus DefineBillboard(XSI::CRef& context)
    {
        Add(context, "TQ4X_ForPennonBillboardType", XSI::CValue::siInt4, LONG{0}, LONG{0}, LONG{6});
        Add(context, "TQ4X_ForPennonSomeFlag", XSI::CValue::siBool, false);
        return XSI::CStatus::OK;
    }

    static XSI::CStatus DefineMaterial(XSI::CRef& context)
    {
        Add(context, "TQ4X_ForPennonMatAttrCullFace", XSI::CValue::siInt4, LONG{1}, LONG{0}, LONG{3});
        Add(context, "TQ4X_ForPennonMatAttrBlendMode", XSI::CValue::siInt4, LONG{-1}, LONG{-1}, LONG{6});
        return XSI::CStatus::OK;
    }

    static XSI::CStatus DefineUserData(XSI::CRef& context)
    {
        Add(context, "TQ4X_ForPennonUserDataParamNameList", XSI::CValue::siString, "");
        return XSI::CStatus::OK;
    }

    static XSI::CStatus DefineExport(XSI::CRef& context)
    {
        Add(context, "OutputFileName", XSI::CValue::siString, "");
        Add(context, "Magnify", XSI::CValue::siFloat, 1.0, 0.0, 100.0);
        return XSI::CStatus::OK;
    }
};

} // namespace tq4x::gltf::test
