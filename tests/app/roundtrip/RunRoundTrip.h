#pragma once

#include "Compare.h"
#include "RoundTripSettings.h"

#include <string>

namespace tq4x::test
{

/// Exports the host's scene with all kinds of files, reads these back and compares them with the host's
/// objects. `name` stands in messages and in the table of deviations.
void RunRoundTrip(const std::string& name, const RoundTripSettings& settings,
                  const SourcePictures& pictures = {});

} // namespace tq4x::test
