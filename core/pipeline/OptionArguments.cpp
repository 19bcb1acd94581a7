#include "pipeline/OptionText.h"

namespace tq4x
{

void ExportOptions::LoadFromArguments(const ExportArguments& arguments)
{
    OutputFileName = arguments.OutputFileName;
    OutputFolder = arguments.OutputFolder;
    for (const std::string_view text : arguments.Options) {
        const std::size_t colon = text.find(':');
        const OptionRow* row = FindCommandRow(text.substr(0, colon));
        if (row != nullptr)
            ReadCommandValue(*row, colon == std::string_view::npos ? "" : text.substr(colon + 1), *this);
    }
}

} // namespace tq4x
