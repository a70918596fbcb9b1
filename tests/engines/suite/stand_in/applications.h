#pragma once

#include "tests/engines/suite/stand_in/served_object.h"

namespace tarvik::test {

/// The application for workbooks or for documents, as far as the engine uses it.
ComValue make_application(Server& server, bool for_workbooks);

} // namespace tarvik::test
