#pragma once

#include "engines/documents/engine.h"
#include "tests/engines/documents/document_parts.h"
#include "tests/support/failure_of.h"
#include "tests/support/test_program.h"

namespace tarvik::test {

/// An engine over a temporary folder, and a document "t.doc" in it.
struct DocumentFile {
    TemporaryFolder folder;
    DiskFiles files{folder.path()};
    RecordedPrinter printer;
    OoxmlDocuments engine{files, printer};
    std::unique_ptr<DocumentApplication> application = engine.create();

    explicit DocumentFile(const Parts& parts) : DocumentFile(make_package(parts)) {}
    explicit DocumentFile(const std::string& package) { folder.write("t.doc", package); }

    TextDocument& open(TextView name = U"t.doc") { return application->open(name); }
    /// Opens the document, does the work, saves it as "neu.doc", and gives the document's part.
    template <typename Work>
    std::string document_after(Work&& work)
    {
        auto& document = open();
        work(document);
        document.save_as(U"neu.doc");
        return part_of(folder.read("neu.doc"), main_part);
    }
    /// The document's part when the text of one cell was replaced.
    std::string document_with(int row, int column, TextView text)
    {
        return document_after([&](TextDocument& document) { document.set_cell_text(row, column, text); });
    }
};

} // namespace tarvik::test
