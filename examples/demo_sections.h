// What the report shows.
#pragma once

#include <string>

#include "demo_analysis.h"
#include "demo_recording.h"

namespace demo {

// The whole page.
std::string report(const Recording& recording, const Analysis& analysis);

}   // namespace demo
