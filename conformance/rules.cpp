#include "conformance/rules.h"

#include <QFile>
#include <QRegularExpression>

namespace tov::conformance {

using namespace Qt::StringLiterals;

namespace {

// A cell of the page as one reads it: of a link, its text.
QString words(QString cell)
{
    static const QRegularExpression link(u"\\[([^]]*)\\]\\([^)]*\\)"_s);
    return cell.replace(link, u"\\1"_s).trimmed();
}

std::vector<Rule> readRules()
{
    static const QRegularExpression row(u"^\\| ([A-Z]+-\\d+) \\| (.*) \\| (.*) ?\\|$"_s);

    QFile page(u":/sdk-implementation.md"_s);
    if (!page.open(QIODevice::ReadOnly))
        qFatal("the page with the rules is not part of the program");
    std::vector<Rule> found;
    QString group;
    for (const QString& line : QString::fromUtf8(page.readAll()).split(u'\n')) {
        if (line.startsWith(u"## "_s))
            group = line.mid(3);
        if (const auto rule = row.match(line); rule.hasMatch())
            found.push_back({rule.captured(1), group, words(rule.captured(2)), words(rule.captured(3))});
    }
    return found;
}

} // namespace

const std::vector<Rule>& rules()
{
    static const std::vector<Rule> all = readRules();
    return all;
}

} // namespace tov::conformance
