#pragma once

#include "office/automation.h"
#include "platform/platform.h"
#include "playback/options.h"

#include <memory>

namespace tarvik {

/// The office engines that an option names. Throws OptionError for an engine that this system does not have.
std::unique_ptr<OfficeEngines> make_engines(Engine engine, Files& files, Printer& printer);

} // namespace tarvik
