#include "conformance/run/report.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QXmlStreamWriter>

#include <algorithm>

namespace tov::conformance {

using namespace Qt::StringLiterals;

namespace {

QString seconds(std::chrono::milliseconds time)
{
    return QString::number(static_cast<double>(time.count()) / 1000, 'f', 1);
}

// A line under a rule, as "must:       text".
QString detail(const QString& what, const QString& text)
{
    return u"      %1 %2\n"_s.arg(what + u':', -10).arg(text);
}

} // namespace

Report::Report(host::ProviderDescription provider, Settings settings, QString repeat)
    : m_provider(std::move(provider))
    , m_settings(std::move(settings))
    , m_repeat(std::move(repeat))
{
}

int Report::count(Verdict verdict) const
{
    return static_cast<int>(
        std::ranges::count_if(m_results, [=](const auto& each) { return each.second.verdict == verdict; }));
}

std::string Report::heading() const
{
    return u"provider %1 %2, seed %3\n"_s.arg(m_provider.name, m_provider.version).arg(m_settings.seed).toStdString();
}

std::string Report::last(bool verbose) const
{
    const auto& [rule, result] = m_results.back();
    QString text = u"%1  %2 s\n"_s.arg(named(result.verdict), -14).arg(seconds(result.took), 5);
    switch (result.verdict) {
    case Verdict::Pass:
        if (verbose)
            text += detail(u"looked at"_s, result.seen);
        if (!result.leftOut.isEmpty())
            text += detail(u"without"_s, result.leftOut);
        break;
    case Verdict::Fail:
        text += detail(u"must"_s, rule.must) + detail(u"seen"_s, result.seen);
        if (!rule.consequence.isEmpty())
            text += detail(u"otherwise"_s, rule.consequence);
        text += detail(u"repeat"_s, repeatFor(rule));
        break;
    case Verdict::NotApplicable:
    case Verdict::Skipped:
    case Verdict::NotCheckable:
        text += detail(u"because"_s, result.seen);
        break;
    }
    return text.toStdString();
}

std::string Report::summary() const
{
    QStringList counts;
    for (const Verdict verdict :
         {Verdict::Pass, Verdict::Fail, Verdict::NotApplicable, Verdict::Skipped, Verdict::NotCheckable})
        if (const int number = count(verdict); number > 0)
            counts.append(u"%1 %2"_s.arg(number).arg(named(verdict)));
    QStringList failed;
    for (const auto& [rule, result] : m_results)
        if (result.verdict == Verdict::Fail)
            failed.append(rule.id);
    return u"\n%1 %2: %3\n%4"_s
        .arg(QString::number(m_results.size()), m_results.size() == 1 ? u"rule"_s : u"rules"_s, counts.join(u", "_s),
             failed.isEmpty() ? QString() : u"broken: %1\n"_s.arg(failed.join(u", "_s)))
        .toStdString();
}

QJsonObject Report::toJson() const
{
    QJsonArray results;
    for (const auto& [rule, result] : m_results) {
        QJsonObject each = conformance::toJson(result);
        each.insert(u"rule"_s, rule.id);
        each.insert(u"must"_s, rule.must);
        each.insert(u"otherwise"_s, rule.consequence);
        each.insert(u"repeat"_s, repeatFor(rule));
        results.append(each);
    }
    return {{u"version"_s, QCoreApplication::applicationVersion()},
            {u"provider"_s, m_provider.name},
            {u"providerVersion"_s, m_provider.version},
            {u"instrument"_s, m_instrument},
            {u"seed"_s, QString::number(m_settings.seed)},
            {u"rules"_s, results}};
}

QByteArray Report::toJUnit() const
{
    std::chrono::milliseconds all(0);
    for (const auto& [rule, result] : m_results)
        all += result.took;

    QByteArray written;
    QXmlStreamWriter xml(&written);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(u"testsuite"_s);
    xml.writeAttribute(u"name"_s, u"service-conformance %1"_s.arg(m_provider.name));
    xml.writeAttribute(u"tests"_s, QString::number(m_results.size()));
    xml.writeAttribute(u"failures"_s, QString::number(count(Verdict::Fail)));
    xml.writeAttribute(u"skipped"_s, QString::number(static_cast<int>(m_results.size()) - count(Verdict::Pass)
                                                     - count(Verdict::Fail)));
    xml.writeAttribute(u"time"_s, seconds(all));
    for (const auto& [rule, result] : m_results) {
        xml.writeStartElement(u"testcase"_s);
        xml.writeAttribute(u"classname"_s, rule.group);
        xml.writeAttribute(u"name"_s, rule.id);
        xml.writeAttribute(u"time"_s, seconds(result.took));
        if (result.verdict == Verdict::Fail) {
            xml.writeStartElement(u"failure"_s);
            xml.writeAttribute(u"message"_s, result.seen);
            xml.writeCharacters(
                u"must: %1\notherwise: %2\nrepeat: %3"_s.arg(rule.must, rule.consequence, repeatFor(rule)));
            xml.writeEndElement();
        } else if (result.verdict != Verdict::Pass) {
            xml.writeStartElement(u"skipped"_s);
            xml.writeAttribute(u"message"_s, named(result.verdict) + u": "_s + result.seen);
            xml.writeEndElement();
        }
        xml.writeEndElement();
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    return written;
}

QString Report::repeatFor(const Rule& rule) const
{
    return m_repeat + u" --only "_s + rule.id;
}

} // namespace tov::conformance
