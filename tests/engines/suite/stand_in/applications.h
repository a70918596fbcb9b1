#pragma once

#include "tests/engines/suite/stand_in/served_object.h"

/// The two applications, as far as the engine uses them.
namespace tarvik::test {

ComValue make_workbook_application(Server& server);
ComValue make_document_application(Server& server);

/// The members that both have, and the one that leads to the files.
std::vector<ServedObject::Member> application_members(Server& server, const wchar_t* files, ServedObject::Work make);

std::filesystem::path path_in(const ComValue& value);
std::string bytes_of(const std::filesystem::path& file);

} // namespace tarvik::test
