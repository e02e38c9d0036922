#pragma once

#include "conformance/bench/bench.h"
#include "conformance/run/result.h"
#include "host/providers.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <string>
#include <utility>
#include <vector>

namespace tov::conformance {

/// What a run has found, for people and for programs.
class Report
{
public:
    /// `repeat` is the command of the run, to which a rule is added.
    Report(host::ProviderDescription provider, Settings settings, QString repeat);

    void setInstrument(const QJsonObject& instrument) { m_instrument = instrument; }
    void add(const Rule& rule, const Result& result) { m_results.emplace_back(rule, result); }

    int count(Verdict verdict) const;

    /// What comes before the first rule, of the last one that was added, and after it.
    std::string heading() const;
    std::string last(bool verbose) const;
    std::string summary() const;

    QJsonObject toJson() const;
    QByteArray toJUnit() const;

private:
    QString repeatFor(const Rule& rule) const;

    host::ProviderDescription m_provider;
    Settings m_settings;
    QString m_repeat;
    QJsonObject m_instrument;
    std::vector<std::pair<Rule, Result>> m_results;
};

} // namespace tov::conformance
