#include "playback/engines.h"

#include "office/spreadsheets/engine.h"

namespace tarvik {

std::unique_ptr<OfficeEngines> make_engines(Engine engine, Files& files, Printer& printer)
{
    if (engine == Engine::LibreOffice) throw OptionError("the engine libreoffice is not part of this build");
    return std::make_unique<OoxmlEngines>(files, printer);
}

} // namespace tarvik
