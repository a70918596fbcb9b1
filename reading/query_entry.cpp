#include "reading/query_entry.h"

namespace tarvik {

void tell_no_result(Program& program, TextView title)
{
    tell(program, U"查寻结果为空！", title);
}

bool has_query(Program& program)
{
    if (!program.form1.query_box().text().empty()) return true;
    tell(program, U"查寻条件为空", plain_title);
    return false;
}

TextView query_text(const Program& program)
{
    return ltrim(program.form1.query_box().text());
}

} // namespace tarvik
