#pragma once

#include "tests/support/packages.h"

/// Documents and pictures that the tests make themselves.
namespace tarvik::test {

inline const std::string main_part = "word/document.xml";

/// A document of this body, which must end with its section's properties if it is to have any.
Parts document_parts(const std::string& body);
/// A paragraph with one run.
std::string paragraph(const std::string& text);
/// A table's cell of this XML behind the properties.
std::string cell(const std::string& contents, const std::string& properties = {});
std::string row(const std::string& cells, const std::string& properties = {});
std::string table(const std::string& rows, const std::string& properties = {});
/// A table of so many cells with the texts "11", "12", ...
std::string plain_table(int rows, int columns);
/// What stands in the w:t elements of a document's part, in order.
std::vector<std::string> texts_of(const std::string& document);

struct PictureNotes {
    int resolution = 0;  ///< points to an inch; 0 tells none
    int orientation = 0; ///< 0 tells none
    bool is_little_endian = false;
};
/// A file with all that a JPEG picture has but points that show anything.
std::string jpeg(int width, int height, const PictureNotes& notes = {});
/// A black PNG picture, with points to a metre unless that is 0.
std::string png(int width, int height, int resolution = 0);
/// A chunk of such a picture.
std::string png_chunk(const std::string& type, const std::string& body);
/// A number as it stands in such a file.
std::string big_endian(unsigned number, unsigned size);

} // namespace tarvik::test
