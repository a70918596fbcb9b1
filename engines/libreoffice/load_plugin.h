#pragma once

#include "engines/libreoffice/bridge.h"

namespace tarvik::libreoffice {

/// The plugin in a file. Throws Damage with what is to be installed where the plugin or LibreOffice is missing.
Plugin& load_plugin(const std::filesystem::path& file);

/// Beside the program that runs; lib/tarvik beside a program's folder that is named bin.
std::filesystem::path usual_plugin_file();

/// What a message calls the suite behind the plugin.
Text suite_title();

} // namespace tarvik::libreoffice
