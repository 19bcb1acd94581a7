#pragma once

#include "collect/ExportAmbientLight.h"
#include "collect/ExportMesh.h"
#include "export/ConvertCollectors.h"
#include "export/Each.h"
#include "export/ExportContext.h"
#include "export/ExportDriver.h"
#include "export/LinkCheck.h"
#include "export/SceneWalk.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/ExportValues.h"
#include "support/MessageRecorder.h"
#include "support/SceneBuilder.h"

#include <string>
#include <vector>

namespace tq4x::test
{

/// Collects and converts the scene that was built last, without writing files: for looking at the records.
/// The tool is not asked for, so that quantisation shows, nor the model file, so that a camera alone will do.
///
///     SceneBuilder scene;
///     SceneNode body = scene.Null("body");
///     CollectRun run;
///     EXPECT_EQ(run.BoneOf(body).Name, "body");
class CollectRun
{
public:
    enum class Until
    {
        Walk,       ///< all collectors exist
        Conversion, ///< the records are filled
    };

    explicit CollectRun(std::vector<std::string> options = {}, Until end = Until::Conversion)
    {
        options.insert(options.begin(), {"OptimizePrimitive:false", "OutputQmdl:false"});
        ExportOptions* record = CreateOptions();
        record->LoadFromArguments({"out", "folder", options});
        GlobalExportValues() = {};
        ResolveExportFrames();
        SetSamplingValues(GlobalExportValues(), *record);
        SetConversionValues(GlobalExportValues(), *record);
        for (const XSI::CRef& root : CollectRoots(false))
            static_cast<void>(WalkScene(Context, root));
        Context.Add({.IsAmbientLight = true},
                    std::make_unique<ExportAmbientLight>(Context, SceneBuilder::Root().GetRef()));
        if (end == Until::Conversion)
            Convert();
    }

    CollectRun(const CollectRun&) = delete;
    CollectRun& operator=(const CollectRun&) = delete;

    ~CollectRun()
    {
        DestroyOptions();
        GlobalExportValues() = {};
    }

    void Convert() { m_isConverted = CheckLinks(Context, CurrentOptions()) && ConvertCollectors(Context); }

    bool Succeeded() const { return m_isConverted; }

    const std::vector<std::string>& Messages() const { return MessageRecorder::Messages(); }

    ExportX3DObject* Collector(const XSI::CRef& object, const XSI::CRef& instance = {}) const
    {
        return Context.FindX3DObject(object, instance.IsValid() ? InstancePath{instance} : InstancePath());
    }

    Bone& BoneOf(const XSI::CRef& object, const XSI::CRef& instance = {}) const
    {
        return Collector(object, instance)->TargetBone();
    }

    /// The mesh of an object; nullptr if it was given up.
    Mesh* MeshOf(const XSI::CRef& object) const { return BoneOf(object).Mesh; }

    /// The camera or light of a name; nullptr if it was left out.
    const Camera* FindCamera(const std::string& name) const
    {
        return FindNamed(Context.Cameras.Cameras, name);
    }

    const Light* FindLight(const std::string& name) const { return FindNamed(Context.Lights.Lights, name); }

private:
    template<typename List>
    static auto FindNamed(const List& list, const std::string& name) -> decltype(&list.front())
    {
        for (const auto& each : list)
            if (each.Name == name)
                return &each;
        return nullptr;
    }

    MessageRecorder m_recorder;

public:
    ExportContext Context;

private:
    bool m_isConverted = false;
};

} // namespace tq4x::test
