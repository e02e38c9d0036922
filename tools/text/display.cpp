#include "tools/text/display.h"

#include <QChar>
#include <QList>
#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace tov::inline tools {

namespace {

struct Range
{
    char32_t first;
    char32_t last;
};

// Characters that take two columns: scripts of East Asia, and pictures.
constexpr std::array wide = {Range{0x1100, 0x115F},   Range{0x2E80, 0x303E},   Range{0x3041, 0x4DBF},
                             Range{0x4E00, 0xA4CF},   Range{0xA960, 0xA97C},   Range{0xAC00, 0xD7A3},
                             Range{0xF900, 0xFAFF},   Range{0xFE30, 0xFE6F},   Range{0xFF00, 0xFF60},
                             Range{0xFFE0, 0xFFE6},   Range{0x1F300, 0x1F64F}, Range{0x1F680, 0x1F6FF},
                             Range{0x1F900, 0x1FAFF}, Range{0x20000, 0x3FFFD}};

std::size_t widthOf(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
        return 0;
    default:
        return std::ranges::any_of(
                   wide, [&](const Range& range) { return range.first <= character && character <= range.last; })
                   ? 2
                   : 1;
    }
}

// The length of the character in UTF-8 with which `text` begins; 0 if it begins with none.
std::size_t lengthOfFirst(std::string_view text)
{
    for (std::size_t length = 1; length <= std::min<std::size_t>(text.size(), 4); ++length)
        if (isUtf8(text.substr(0, length)))
            return length;
    return 0;
}

bool isControl(std::string_view character)
{
    const QString decoded = QString::fromUtf8(character.data(), static_cast<qsizetype>(character.size()));
    return decoded.front().category() == QChar::Other_Control || decoded.front() == QChar::LineSeparator
           || decoded.front() == QChar::ParagraphSeparator;
}

} // namespace

bool isUtf8(std::string_view text)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    return !decoder.hasError();
}

std::string displayed(std::string_view text)
{
    std::string shown;
    while (!text.empty()) {
        const std::size_t length = lengthOfFirst(text);
        const std::string_view first = text.substr(0, std::max<std::size_t>(length, 1));
        if (length == 0 || isControl(first))
            for (const char byte : first)
                shown.append("\\x").append(QByteArray(1, byte).toHex().toUpper().toStdString());
        else
            shown += first;
        text.remove_prefix(first.size());
    }
    return shown;
}

std::size_t displayWidth(std::string_view text)
{
    std::size_t width = 0;
    for (const char32_t character : QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toUcs4())
        width += widthOf(character);
    return width;
}

} // namespace tov::inline tools
