#include "export/PlaceDialog.h"

namespace tq4x
{

void PlaceDialog(const std::string&) {}

} // namespace tq4x
