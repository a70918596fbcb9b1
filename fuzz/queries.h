#pragma once

#include "fuzz/target.h"
#include "reading/reading.h"
#include "tests/reading/slow_searches.h"
#include "tests/support/test_program.h"

namespace tarvik::fuzz {

/// One query of a program that stands ready, over `text`, by the button or by Enter.
inline void run_query(test::TestProgram& started, const Text& text, const Text& query, bool by_enter)
{
    started.open_text(text);
    started.form1().query_box().set_text(query);
    started.dialogs.replies = {Answer::Yes};
    if (by_enter) query_by_enter(started.program);
    else Command1_Click(started.program, 1);
    started.dialogs.messages.clear();
}

inline void require_same(const Form1& form1, const TextArray& results, const test::Pieces& expected)
{
    require(static_cast<double>(form1.resultcount) == expected.count, "how many there are");
    for (std::size_t i = 0; i < expected.stored.size(); ++i)
        require(results.get(i).str() == expected.stored[i], "a result");
    require(results.get(expected.stored.size()).empty(), "no result behind the last");
}

} // namespace tarvik::fuzz
