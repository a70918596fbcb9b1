#pragma once

#include <string_view>

/// The names of the files that lie in the installation folder and are known to more than one place, and the folders
/// that stand elsewhere.
namespace tarvik::files {

// Text reports
inline constexpr std::u32string_view report_3137 = U"3137.txt"; ///< return orders
inline constexpr std::u32string_view report_3138 = U"3138.txt"; ///< devices out of warranty
inline constexpr std::u32string_view report_3139 = U"3139.txt"; ///< all devices; the page box adds its folder to it
inline constexpr std::u32string_view report_3158 = U"3158.txt"; ///< devices beyond repair
inline constexpr std::u32string_view report_3159 = U"3159.txt"; ///< source of the designed reports
inline constexpr std::u32string_view report_3160 = U"3160.txt"; ///< source of live comparisons and service bills
inline constexpr std::u32string_view report_kept = U"保留.txt";
inline constexpr std::u32string_view report_labels = U"z1z6型号综合统计.txt";
inline constexpr std::u32string_view character_list = U"3150.txt";   ///< written by "An statistic"
inline constexpr std::u32string_view repair_rules = U"维修规则.txt"; ///< the department's rules, for "An order"

// Designs of reports
inline constexpr std::u32string_view design_a = U"automation.bin";
inline constexpr std::u32string_view design_b = U"automation2.bin";
inline constexpr std::u32string_view design_live = U"automation3.bin";

// Workbooks that are filled
inline constexpr std::u32string_view label_list = U"z1.xlsx";
inline constexpr std::u32string_view older_docket = U"z2.xlsx";
inline constexpr std::u32string_view older_long_docket = U"z3.xlsx";
inline constexpr std::u32string_view docket = U"z5.xlsx";
inline constexpr std::u32string_view long_docket = U"z6.xlsx";
inline constexpr std::u32string_view service_bill = U"z8.xlsx";
inline constexpr std::u32string_view service_list = U"z80.xlsx";
inline constexpr std::u32string_view service_summary = U"z9.xlsx";
inline constexpr std::u32string_view designed_a = U"designerA.xlsx";
inline constexpr std::u32string_view designed_b = U"designerB.xlsx";

// Documents that are filled, and the pictures that go into them
inline constexpr std::u32string_view repair_report_1 = U"wtest1.doc"; ///< both flags
inline constexpr std::u32string_view repair_report_2 = U"wtest2.doc"; ///< the second flag alone
inline constexpr std::u32string_view repair_report_3 = U"wtest3.doc"; ///< the first flag alone
inline constexpr std::u32string_view repair_report_5 = U"wtest5.doc"; ///< neither
inline constexpr std::u32string_view pictures = U"photo";             ///< a folder

// Folders
inline constexpr std::u32string_view default_output = U"d:\\Atarvik output\\";
inline constexpr std::u32string_view printed_output = U"d:/fprino/";

} // namespace tarvik::files
