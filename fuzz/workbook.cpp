#include "engines/spreadsheets/sheet_look.h"
#include "engines/spreadsheets/workbook_model.h"
#include "fuzz/package_input.h"

using namespace tarvik;
using namespace tarvik::ooxml;

/// A workbook is opened, filled and packed, or refused; what was packed opens again and holds what was written.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string packed;
    Text in_c3;
    try {
        WorkbookModel model(std::make_shared<Package>(fuzz::package_of(fuzz::bytes_of_input(data, size))));
        SheetPart& sheet = model.sheet(1);
        for (int row = 1; row < 10; ++row) static_cast<void>(sheet.text({row, 2}));
        static_cast<void>(sheet_look(sheet.part().root(), model.original(), 9, 9));
        sheet.clear({{1, 1}, {20, 20}});
        sheet.write({2, 2}, 1.0);
        const Text written = U"文_x0041_ <", before = sheet.text({3, 3});
        sheet.write({3, 3}, written);
        in_c3 = sheet.text({3, 3});
        fuzz::require(in_c3 == written || in_c3 == before, "a text is written, elsewhere in a merged range");
        model.set_format(WorkbookFormat::Plain);
        packed = model.pack();
    } catch (const Damage&) { // the user is told
        return 0;
    }
    WorkbookModel again(std::make_shared<Package>(packed));
    fuzz::require(again.sheet(1).text({3, 3}) == in_c3, "what was written is read back");
    return 0;
}
