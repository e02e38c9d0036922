#include "console/whole/document.h"

#include <QXmlStreamWriter>

namespace tov::console {

using namespace Qt::StringLiterals;

namespace {

constexpr auto style = R"(
:root { color-scheme: light dark; }
body { font: 15px/1.4 system-ui, sans-serif; max-width: 70em; margin: 2em auto; padding: 0 1em; }
h1 { font-size: 1.6em; }
h2 { font-size: 1.15em; margin: 1.8em 0 0.4em; }
table { border-collapse: collapse; }
th, td { text-align: left; vertical-align: top; padding: 0.15em 0.9em 0.15em 0; overflow-wrap: anywhere; }
thead th { border-bottom: 1px solid; white-space: nowrap; }
tbody tr:nth-child(even) { background: rgba(128, 128, 128, 0.12); }
.error { color: #b00020; font-weight: bold; }
@media (prefers-color-scheme: dark) { .error { color: #ff8a80; } }
@media print {
  :root { color-scheme: light; }
  @page { margin: 15mm; }
  body { font-size: 9pt; max-width: none; margin: 0; padding: 0; }
  h2 { break-after: avoid; }
  thead { display: table-header-group; }
  tr { break-inside: avoid; }
  .error { color: inherit; }
}
)"_L1;

/// Writes HTML that is XML as well.
class Page
{
public:
    explicit Page(QByteArray* page)
        : m_xml(page)
    {
    }

    void write(const QJsonObject& document)
    {
        const QString title = "Instrument "_L1 + document["instrument"_L1].toString();
        m_xml.writeDTD("<!DOCTYPE html>"_L1);
        m_xml.writeStartElement("html"_L1);
        m_xml.writeAttribute("lang"_L1, "en"_L1);
        m_xml.writeStartElement("head"_L1);
        m_xml.writeEmptyElement("meta"_L1);
        m_xml.writeAttribute("charset"_L1, "utf-8"_L1);
        m_xml.writeEmptyElement("meta"_L1);
        m_xml.writeAttribute("name"_L1, "viewport"_L1);
        m_xml.writeAttribute("content"_L1, "width=device-width"_L1);
        writeText("title"_L1, title);
        m_xml.writeTextElement("style"_L1, style);
        m_xml.writeEndElement();
        m_xml.writeStartElement("body"_L1);
        writeText("h1"_L1, title);
        writeHeader(document);
        for (const Part& part : parts())
            writePart(part, partOf(document, part));
        m_xml.writeEndDocument();
    }

private:
    // What XML cannot hold is shown by the character that stands for what cannot be shown.
    static QString clean(QString text)
    {
        for (QChar& character : text)
            if ((character < u' ' && character != u'\t' && character != u'\n') || character.unicode() >= 0xFFFE)
                character = QChar::ReplacementCharacter;
        return text;
    }

    void writeText(QLatin1StringView element, const QString& text) { m_xml.writeTextElement(element, clean(text)); }

    void writeCell(QLatin1StringView element, const std::string& text, bool isError = false)
    {
        m_xml.writeStartElement(element);
        if (isError)
            m_xml.writeAttribute("class"_L1, "error"_L1);
        m_xml.writeCharacters(clean(QString::fromStdString(text)));
        m_xml.writeEndElement();
    }

    void writeHeader(const QJsonObject& document)
    {
        m_xml.writeStartElement("table"_L1);
        m_xml.writeStartElement("tbody"_L1);
        for (const auto& [name, value] : headerOf(document)) {
            m_xml.writeStartElement("tr"_L1);
            writeCell("th"_L1, name);
            writeCell("td"_L1, value);
            m_xml.writeEndElement();
        }
        m_xml.writeEndElement();
        m_xml.writeEndElement();
    }

    void writePart(const Part& part, const QJsonValue& value)
    {
        writeText("h2"_L1, QString::fromStdString(part.title));
        if (const std::string error = errorOf(value); !error.empty())
            writeCell("p"_L1, error, true);
        else if (value.toArray().isEmpty())
            writeText("p"_L1, "none"_L1);
        else
            writeRows(part, value.toArray());
    }

    void writeRows(const Part& part, const QJsonArray& rows)
    {
        m_xml.writeStartElement("table"_L1);
        m_xml.writeStartElement("thead"_L1);
        m_xml.writeStartElement("tr"_L1);
        for (const std::string& column : columnsOf(part))
            writeCell("th"_L1, headingOf(part, column));
        m_xml.writeEndElement();
        m_xml.writeEndElement();
        m_xml.writeStartElement("tbody"_L1);
        for (const auto& row : rows) {
            m_xml.writeStartElement("tr"_L1);
            for (const std::string& text : cellsOf(part, row.toObject()))
                writeCell("td"_L1, text, !text.empty() && text == errorOf(row));
            m_xml.writeEndElement();
        }
        m_xml.writeEndElement();
        m_xml.writeEndElement();
    }

    QXmlStreamWriter m_xml;
};

} // namespace

QByteArray documentPage(const QJsonObject& document)
{
    QByteArray page;
    Page(&page).write(document);
    return page;
}

} // namespace tov::console
