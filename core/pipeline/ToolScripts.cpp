#include "pipeline/ToolScripts.h"

#include "pipeline/NodeCompression.h"
#include "pipeline/PathText.h"
#include "pipeline/TextHelpers.h"

#include <algorithm>
#include <initializer_list>
#include <set>

namespace tq4x
{
namespace
{

constexpr char Delete = 0x7F;
constexpr unsigned char FirstPrintable = 0x20;

/// One call of the tool: each argument between quotes.
std::string Execute(std::initializer_list<std::string_view> arguments)
{
    std::string list;
    for (const std::string_view argument : arguments)
        list.append(list.empty() ? "\"" : ", \"").append(argument).append("\"");
    return "BrellStudio.Execute(" + list + ")\n";
}

std::string Joined(std::string_view a, std::string_view b)
{
    return std::string(a).append(b);
}

/// The tool reads this call with its blank before the comma.
constexpr std::string_view FileLine = "BrellStudio.Execute(\"File\" ,\"\")\n\n";

/// Makes a document current if the tool has it.
std::string SelectDocumentLines(std::string_view name)
{
    return Execute({"CheckExist", Joined("-ds=", name)}) + "if BrellStudio.ReturnValue == True :\n  " +
           Execute({"ContentDocument", Joined("-n=", name), "-op=e", "-fnp", "-tg=scd", "-st=u"});
}

std::string SelectionLine(std::string_view name, std::string_view mode)
{
    return Execute({"Selection", Joined("-cs=", name), mode});
}

std::string_view QuantizeWord(std::int32_t mode)
{
    switch (mode) {
    case 1:
        return "Short";
    case 3:
        return "Byte";
    case 5:
        return "Auto";
    default:
        return "Float";
    }
}

std::string OptimizeLine(const OptimizeJob& job)
{
    std::string line = "BrellStudio.Execute(\"OptimizeSelectedModel\"";
    const auto add = [&line](std::string_view option, std::string_view value = {}) {
        line.append(", \"").append(option).append(value).append("\"");
    };
    if (const std::string_view mode = NodeCompressionKeyword(static_cast<std::uint32_t>(job.NodeMode));
        !mode.empty()) {
        add("-mode=", mode);
        add("-cmesh");
    }
    if (job.OptimizePrimitive)
        add("-opp");
    if (job.CompressMaterial)
        add("-cmat");
    if (job.ConvertToModel)
        add("-cobsm");
    add("-positionqm=", QuantizeWord(job.QuantizePos));
    add("-normalqm=", QuantizeWord(job.QuantizeNrm));
    add("-textureqm=", QuantizeWord(job.QuantizeTex));
    return line + ")\n";
}

std::string OptimizeLines(const OptimizeJob& job, const std::string& base, const std::string& name)
{
    std::string text;
    if (job.OptimizeModel)
        text += Execute({"FileLoad", base + ".qmdl"});
    if (TakesAnimation(job))
        text += Execute({"FileLoad", base + ".qskla"});
    if (job.OptimizeModel)
        text += SelectDocumentLines(name) + SelectionLine(name, "-s=r");
    if (TakesAnimation(job)) {
        text += SelectionLine(name + ".SkeletalAnimation", "-s=add");
        text += SelectionLine(name + ".VisibilityAnimation", "-s=add");
    }
    text += OptimizeLine(job);
    text += Execute({"SaveDocuments", "-idd"});
    return text.append(FileLine);
}

std::string MergeLines(const OptimizeJob& job, const std::string& base, const std::string& name)
{
    std::string text = Execute({"FileLoad", base + ".qmdl"});
    text += SelectDocumentLines(name) + SelectionLine(name, "-s=r");
    text += Execute({"FileLoad", ScriptPath(job.MergePath), "-opz=MergeContentQtr"});
    text += Execute({"FileSave", Joined("-o=", base + ".qmdl"), "--type=Save", "-ft=tq4xAscii", "-sao"});
    return text.append(FileLine);
}

} // namespace

std::string ScriptPath(std::string_view path)
{
    return ToUtf8(ForwardSlashes(path));
}

bool IsScriptSafe(std::string_view text)
{
    return std::ranges::none_of(text, [](char c) {
        return c == '"' || c == '`' || c == '$' || c == Delete ||
               static_cast<unsigned char>(c) < FirstPrintable;
    });
}

std::string OptimizeScript(const OptimizeJob& job, std::string_view base, std::string_view documentName)
{
    const std::string basePath = ScriptPath(base);
    const std::string name = ToUtf8(documentName);
    std::string text;
    if (IsOptimizationAskedFor(job))
        text += OptimizeLines(job, basePath, name);
    if (job.Merge)
        text += MergeLines(job, basePath, name);
    return text;
}

std::string ViewerScript(const std::vector<ViewerFile>& files)
{
    std::string text;
    std::set<std::string> documents;
    for (const ViewerFile& file : files)
        if (documents.insert(file.Document).second)
            text += SelectDocumentLines(ToUtf8(file.Document));
    for (const ViewerFile& file : files)
        text += Execute({"FileLoad", ScriptPath(file.Path), "-isfc", "-laus"});
    return text;
}

} // namespace tq4x
