#include "tests/engines/documents/document_parts.h"

#include <algorithm>

#include <zlib.h>

namespace tarvik::test {

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n";
const std::string schemas = "http://schemas.openxmlformats.org/";
const std::string type_base = "application/vnd.openxmlformats-";

std::string element(const std::string& name, const std::string& contents)
{
    return "<" + name + ">" + contents + "</" + name + ">";
}

// The properties' element where there are any.
std::string with_properties(const std::string& name, const std::string& properties, const std::string& contents)
{
    return element("w:" + name, (properties.empty() ? "" : element("w:" + name + "Pr", properties)) + contents);
}

std::string little_endian(unsigned number, unsigned size)
{
    auto bytes = big_endian(number, size);
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

// A camera's notes with an orientation and 200 points to a centimetre.
std::string camera_notes(const PictureNotes& notes)
{
    const auto number = [&](unsigned value, unsigned size) {
        return notes.is_little_endian ? little_endian(value, size) : big_endian(value, size);
    };
    const auto entry = [&](unsigned tag, unsigned kind, const std::string& value) {
        return number(tag, 2) + number(kind, 2) + number(1, 4) + value;
    };
    constexpr unsigned behind_entries = 8 + 2 + 4 * 12 + 4;
    return (notes.is_little_endian ? "II" : "MM") + number(42, 2) + number(8, 4) + number(4, 2) +
           entry(0x0112, 3, number(static_cast<unsigned>(notes.orientation), 2) + number(0, 2)) +
           entry(0x011A, 5, number(behind_entries, 4)) + entry(0x011B, 5, number(behind_entries, 4)) +
           entry(0x0128, 3, number(3, 2) + number(0, 2)) + number(0, 4) + number(400, 4) + number(2, 4);
}

std::string segment(unsigned char marker, const std::string& body)
{
    return std::string("\xFF") + static_cast<char>(marker) + big_endian(static_cast<unsigned>(body.size()) + 2, 2) +
           body;
}

} // namespace

Parts document_parts(const std::string& body)
{
    const auto relationship = [](const std::string& id, const std::string& type, const std::string& target) {
        return "<Relationship Id=\"" + id + "\" Type=\"" + schemas + "officeDocument/2006/relationships/" + type +
               "\" Target=\"" + target + "\"/>";
    };
    const auto relationships = [](const std::string& all) {
        return declaration + "<Relationships xmlns=\"" + schemas + "package/2006/relationships\">" + all +
               "</Relationships>";
    };
    return {
        {"[Content_Types].xml",
         declaration + "<Types xmlns=\"" + schemas + "package/2006/content-types\">" +
             "<Default Extension=\"rels\" ContentType=\"" + type_base + "package.relationships+xml\"/>" +
             "<Default Extension=\"xml\" ContentType=\"application/xml\"/><Override PartName=\"/word/document.xml\" " +
             "ContentType=\"" + type_base + "officedocument.wordprocessingml.document.main+xml\"/></Types>"},
        {"_rels/.rels", relationships(relationship("rId1", "officeDocument", "word/document.xml"))},
        {main_part, declaration + "<w:document xmlns:w=\"" + schemas + "wordprocessingml/2006/main\"><w:body>" + body +
                        "</w:body></w:document>"},
        {"word/_rels/document.xml.rels",
         relationships(relationship("rId1", "styles", "styles.xml") + relationship("rId4", "header", "header1.xml"))},
        {"word/header1.xml", "<w:hdr><wp:docPr name='a' id=\"2\"/>" + plain_table(1, 1) + "</w:hdr>"},
        {"word/styles.xml", "<w:styles xmlns:w='s' >\r\n</w:styles >"},
        {"word/media/image1.png", std::string("\x89PNG\0\r\n\xff\xfe", 9)},
        {"word/vbaProject.bin", std::string(700, '\0')},
    };
}

std::string paragraph(const std::string& text)
{
    return "<w:p><w:r><w:t>" + text + "</w:t></w:r></w:p>";
}

std::string cell(const std::string& contents, const std::string& properties)
{
    return with_properties("tc", properties, contents);
}

std::string row(const std::string& cells, const std::string& properties)
{
    return with_properties("tr", properties, cells);
}

std::string table(const std::string& rows, const std::string& properties)
{
    return with_properties("tbl", properties, rows);
}

std::string plain_table(int rows, int columns)
{
    std::string all;
    for (int i = 1; i <= rows; ++i) {
        std::string cells;
        for (int k = 1; k <= columns; ++k) cells += cell(paragraph(std::to_string(i) + std::to_string(k)));
        all += row(cells);
    }
    return table(all);
}

std::vector<std::string> texts_of(const std::string& document)
{
    std::vector<std::string> texts;
    for (auto at = document.find("<w:t>"); at != std::string::npos; at = document.find("<w:t>", at + 1)) {
        texts.push_back(document.substr(at + 5, document.find('<', at + 5) - at - 5));
    }
    return texts;
}

std::string big_endian(unsigned number, unsigned size)
{
    std::string bytes;
    for (unsigned i = size; i > 0; --i) bytes += static_cast<char>(number >> (i - 1) * 8);
    return bytes;
}

std::string jpeg(int width, int height, const PictureNotes& notes)
{
    const auto resolution = big_endian(static_cast<unsigned>(notes.resolution), 2);
    std::string bytes = "\xFF\xD8";
    bytes += segment(0xE0, std::string("JFIF\0\1\2", 7) + (notes.resolution > 0 ? '\1' : '\0') + resolution +
                               resolution + std::string(2, '\0'));
    if (notes.orientation > 0) bytes += segment(0xE1, std::string("Exif\0\0", 6) + camera_notes(notes));
    bytes += segment(0xC4, std::string(18, '\0'));
    bytes += segment(0xC0, '\10' + big_endian(static_cast<unsigned>(height), 2) +
                               big_endian(static_cast<unsigned>(width), 2) + std::string("\1\1\x11\0", 4));
    bytes += segment(0xDA, std::string("\1\1\0\0\x3F\0", 6));
    return bytes + std::string(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) / 512 + 1, '\x55') +
           "\xFF\xD9";
}

std::string png_chunk(const std::string& type, const std::string& body)
{
    const auto checked = type + body;
    const auto sum = crc32_z(0, reinterpret_cast<const Bytef*>(checked.data()), checked.size());
    return big_endian(static_cast<unsigned>(body.size()), 4) + checked + big_endian(static_cast<unsigned>(sum), 4);
}

std::string png(int width, int height, int resolution)
{
    const std::string rows(static_cast<std::size_t>(height) * (1 + static_cast<std::size_t>(width)), '\0');
    std::string points(compressBound(static_cast<uLong>(rows.size())), '\0');
    auto size = static_cast<uLongf>(points.size());
    compress(reinterpret_cast<Bytef*>(points.data()), &size, reinterpret_cast<const Bytef*>(rows.data()),
             static_cast<uLong>(rows.size()));
    points.resize(size);
    const auto told = big_endian(static_cast<unsigned>(resolution), 4);
    return "\x89PNG\r\n\x1A\n" +
           png_chunk("IHDR", big_endian(static_cast<unsigned>(width), 4) +
                                 big_endian(static_cast<unsigned>(height), 4) + std::string("\10\0\0\0\0", 5)) +
           (resolution > 0 ? png_chunk("pHYs", told + told + '\1') : "") +
           png_chunk("IDAT", points.substr(0, size / 2)) + png_chunk("IDAT", points.substr(size / 2)) +
           png_chunk("IEND", "");
}

} // namespace tarvik::test
