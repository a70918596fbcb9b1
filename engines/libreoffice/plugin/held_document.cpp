#include "engines/libreoffice/plugin/held_file.h"

#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/graphic/GraphicProvider.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/table/XTableRows.hpp>
#include <com/sun/star/text/ControlCharacter.hpp>
#include <com/sun/star/text/TableColumnSeparator.hpp>
#include <com/sun/star/text/TextContentAnchorType.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextDocument.hpp>
#include <com/sun/star/text/XTextTable.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace tarvik::libreoffice {

using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using css::uno::XInterface;

namespace {

using Table = Reference<css::text::XTextTable>;
using Cell = Reference<css::text::XText>;

// The tables of headers, frames and other tables do not stand in the body, and its order is that of the reader.
Table first_table(const Reference<css::text::XTextDocument>& document)
{
    const Reference<css::container::XEnumerationAccess> body(document->getText(), UNO_QUERY_THROW);
    const auto contents = body->createEnumeration();
    while (contents->hasMoreElements()) {
        Table table(contents->nextElement(), UNO_QUERY);
        if (table.is()) return table;
    }
    return {};
}

// Columns are named A to Z, a to z, AA and so on.
rtl::OUString cell_name(int row, int column)
{
    constexpr int letters = 52;
    std::string name;
    for (int left = column; left > 0; left = (left - 1) / letters) {
        const int letter = (left - 1) % letters;
        name.insert(name.begin(), static_cast<char>(letter < 26 ? 'A' + letter : 'a' + letter - 26));
    }
    return to_uno(name + std::to_string(row));
}

class HeldDocument final : public HeldFile<OpenDocument> {
public:
    HeldDocument(const Model& model, const Reference<css::text::XTextDocument>& document,
                 const Reference<css::uno::XComponentContext>& context)
        : HeldFile(model), table_(first_table(document)), pictures_(css::graphic::GraphicProvider::create(context))
    {
    }

    bool has_table() override { return table_.is(); }

    bool set_cell_text(int row, int column, const Text& text) override
    {
        const Cell cell = cell_at(row, column);
        if (cell.is()) cell->setString(to_uno(text));
        return cell.is();
    }

    bool add_picture(int row, int column, const std::filesystem::path& picture, Size size) override
    {
        const Cell cell = cell_at(row, column);
        if (!cell.is()) return false;
        const Size page = text_of_page(cell);
        const int border =
            property_of<sal_Int32>(cell, "LeftBorderDistance") + property_of<sal_Int32>(cell, "RightBorderDistance");
        const double room = part_of_table(row, column) * table_width(page.width) - border;
        const double scale = std::min({1.0, room / size.width, page.height / size.height});
        const auto length = [scale](double whole) { return std::max(1, static_cast<int>(whole * scale)); };
        const auto graphic = pictures_->queryGraphic(properties({property("URL", file_url(picture))}));
        const auto object =
            as<css::lang::XMultiServiceFactory>()->createInstance("com.sun.star.text.TextGraphicObject");
        const Reference<css::beans::XPropertySet> set(object, UNO_QUERY_THROW);
        set->setPropertyValue("Graphic", css::uno::Any(graphic));
        set->setPropertyValue("AnchorType", css::uno::Any(css::text::TextContentAnchorType_AS_CHARACTER));
        const Reference<css::drawing::XShape> shape(object, UNO_QUERY_THROW);
        shape->setSize({length(size.width), length(size.height)});
        const Reference<css::text::XTextContent> content(object, UNO_QUERY_THROW);
        if (!cell->getString().isEmpty())
            cell->insertControlCharacter(cell->getEnd(), css::text::ControlCharacter::PARAGRAPH_BREAK, false);
        cell->insertTextContent(cell->getEnd(), content, false);
        return true;
    }

private:
    // A cell that a merged one above covers spans no row of its own.
    Cell cell_at(int row, int column) const
    {
        if (row < 1 || column < 1) return {};
        Cell cell(table_->getCellByName(cell_name(row, column)), UNO_QUERY);
        if (cell.is() && property_of<sal_Int32>(cell, "RowSpan") < 1) return {};
        return cell;
    }

    Size text_of_page(const Cell& cell) const
    {
        const auto name = property_of<rtl::OUString>(cell->createTextCursor(), "PageStyleName");
        const auto families = as<css::style::XStyleFamiliesSupplier>()->getStyleFamilies();
        Reference<css::container::XNameAccess> styles(families->getByName("PageStyles"), UNO_QUERY_THROW);
        const Reference<XInterface> style(styles->getByName(name), UNO_QUERY_THROW);
        const auto length = [&](const char* of) { return static_cast<double>(property_of<sal_Int32>(style, of)); };
        return {length("Width") - length("LeftMargin") - length("RightMargin"),
                length("Height") - length("TopMargin") - length("BottomMargin")};
    }

    double table_width(double page_width) const
    {
        const int percent = property_of<sal_Int16>(table_, "RelativeWidth");
        if (percent > 0) return page_width * percent / 100;
        return std::min<double>(property_of<sal_Int32>(table_, "Width"), page_width);
    }

    double part_of_table(int row, int column) const
    {
        const Reference<XInterface> cells(table_->getRows()->getByIndex(row - 1), UNO_QUERY_THROW);
        const auto ends = property_of<Sequence<css::text::TableColumnSeparator>>(cells, "TableColumnSeparators");
        const int whole = property_of<sal_Int16>(table_, "TableColumnRelativeSum");
        const auto end_of = [&](int number) {
            if (number == 0) return 0;
            return number <= ends.getLength() ? static_cast<int>(ends[number - 1].Position) : whole;
        };
        return static_cast<double>(end_of(column) - end_of(column - 1)) / std::max(whole, 1);
    }

    Table table_;
    Reference<css::graphic::XGraphicProvider> pictures_;
};

} // namespace

std::unique_ptr<OpenDocument> hold_document(const Model& model, const Reference<css::uno::XComponentContext>& context)
{
    const Reference<css::text::XTextDocument> document(model, UNO_QUERY);
    if (!document.is()) return nullptr;
    return std::make_unique<HeldDocument>(model, document, context);
}

} // namespace tarvik::libreoffice
