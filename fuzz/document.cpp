#include "engines/documents/engine.h"
#include "fuzz/package_input.h"

using namespace tarvik;
using namespace tarvik::ooxml;

/// A document gets texts and a picture, or is refused; what was packed opens again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string packed, picture;
    try {
        DocumentModel model(std::make_shared<Package>(fuzz::package_of(fuzz::bytes_of_input(data, size), &picture)));
        model.set_cell_text(1, 1, U"一\n二");
        packed = model.pack();
        model.set_cell_text(2, 2, U"");
        model.add_picture(1, 2, {picture, read_picture(picture)}, U"p.jpg");
        packed = model.pack();
    } catch (const Damage&) { // the user is told; what was packed before stands
        if (packed.empty()) return 0;
    }
    DocumentModel again(std::make_shared<Package>(packed));
    again.set_cell_text(1, 1, U"三");
    return 0;
}
