#include "office/libreoffice/load_plugin.h"
#include "office/libreoffice/office_process.h"

#include "office/packages/damage.h"
#include "platform/system_paths.h"

#include <cerrno>
#include <system_error>

/// LibreOffice is driven through a plugin that is not built here: whoever asks for that engine hears so before anything
/// is started.
namespace tarvik::libreoffice {

Plugin& load_plugin(const std::filesystem::path& /*file*/)
{
    throw ooxml::Damage(U"这一版程序不带 LibreOffice 引擎。");
}

std::filesystem::path usual_plugin_file()
{
    return program_file().parent_path() / plugin_file;
}

OfficeProcess::OfficeProcess(const std::filesystem::path& /*programs*/, const std::filesystem::path& /*folder*/)
{
    throw std::system_error(ENOSYS, std::generic_category());
}

OfficeProcess::~OfficeProcess() = default;

bool OfficeProcess::has_ended()
{
    return true;
}

void OfficeProcess::kill() const noexcept {}

} // namespace tarvik::libreoffice
