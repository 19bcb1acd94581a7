#pragma once

#include "RandomDraw.h"
#include "RoundTripSettings.h"

namespace tq4x::test
{

/// Options by chance for a scene whose time line runs from `first` to `last`.
RoundTripSettings DrawSettings(RandomDraw& draw, int first, int last);

} // namespace tq4x::test
