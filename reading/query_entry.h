#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// A query starts with its button or with Enter. Both do the same work; what they tell has different titles.
struct QueryEntry {
    bool by_enter;
    std::u32string_view question_title;
    std::u32string_view no_result_title;
    std::u32string_view no_english_result_title; ///< of a lookup in the English dictionary
};

inline constexpr QueryEntry query_button{false, U"Tarvik 计算 之查寻", U"Tarvik 计算 之 查寻", U"Tarvik 计算 之 查寻"};
inline constexpr QueryEntry query_enter{true, application_title, application_title, U"Tarvik 计算 查寻"};

/// The title of the boxes that bear the same one whatever the entry.
inline constexpr std::u32string_view plain_title = U"Tarvik";

/// "查寻结果为空！"
void tell_no_result(Program& program, TextView title);

/// Whether the query box holds anything; tells the user when it does not.
bool has_query(Program& program);

/// The query box without its leading blanks.
TextView query_text(const Program& program);

} // namespace tarvik
