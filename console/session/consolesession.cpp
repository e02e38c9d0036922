#include "console/session/consolesession.h"

#include "console/terminal/confirmation.h"
#include "console/terminal/spinner.h"
#include "console/terminal/terminal.h"
#include "tools/text/display.h"
#include "tools/text/suggestions.h"

#include <QDateTime>

#include <algorithm>
#include <cstdlib>
#include <thread>
#include <type_traits>
#include <utility>

namespace tov::console {

using provider::ITestHooks;
using provider::Result;

namespace {

template <typename Error, typename Value>
Value orThrow(Result<Value> result)
{
    if (!result)
        throw Error(result.error().toStdString());
    if constexpr (!std::is_void_v<Value>)
        return std::move(*result);
}

constexpr QLatin1StringView stateOption("state");

// A provider as a user names it, without its options.
std::string nameOf(const std::string& provider)
{
    return provider.substr(0, provider.find(':'));
}

// Empty when there is one of this name, or none that is close.
std::string closestProvider(const std::string& provider)
{
    const std::string typed = nameOf(provider);
    std::vector<std::string> names;
    for (const host::ProviderDescription& found : host::findProviders().found)
        if (names.emplace_back(found.name.toStdString()) == typed)
            return {};
    return closest(typed, names);
}

bool isColoured(const std::string& color)
{
    if (color == "auto")
        return standardOutputIsTerminal() && qEnvironmentVariableIsEmpty("NO_COLOR")
               && qgetenv("TERM") != QByteArrayView("dumb");
    if (color != "always" && color != "never")
        throw BadUse("'" + color + "' is no value for --color: use auto, always or never");
    return color == "always";
}

Output outputAs(const AnswerOptions& options)
{
    const QString columns = QString::fromStdString(options.columns);
    TableForm tables{
        .columns = {}, .filter = options.filter, .width = terminalWidth(), .coloured = isColoured(options.color)};
    for (const QString& column : columns.split(',', Qt::SkipEmptyParts))
        tables.columns.push_back(column.trimmed().toStdString());
    return {options.json ? Output::Form::Json : Output::Form::Text, std::move(tables)};
}

/// For an instrument that tests cannot do anything to.
class NoHooks final : public ITestHooks
{
public:
    std::vector<Ability> abilities() const override { return {}; }
};

} // namespace

ConsoleSession::ConsoleSession(const Options& options)
    : m_options(options)
    , m_output(outputAs(options))
{
    for (const std::string& name : m_options.missing)
        controlNamed(name); // throws for an unknown one
    for (const std::string* const text : {&m_options.provider, &m_options.stateFile})
        if (!isUtf8(*text)) // as a provider's options are
            throw BadUse(quoted(displayed(*text)) + " is no name for a provider or a state: it is not UTF-8");
}

void ConsoleSession::setAnswerOptions(const AnswerOptions& options)
{
    static_cast<AnswerOptions&>(m_options) = options;
    m_output = outputAs(options);
}

const host::ProviderChoice& ConsoleSession::choice()
{
    if (m_choice)
        return *m_choice;
    auto chosen = host::chooseProvider(QString::fromStdString(m_options.provider));
    if (const std::string meant = chosen ? "" : closestProvider(m_options.provider); !meant.empty())
        throw BadUse("there is no provider " + quoted(nameOf(m_options.provider)) + "; did you mean '" + meant + "'?");
    auto choice = orThrow<BadUse>(std::move(chosen));
    for (const std::string& name : m_options.missing)
        orThrow<BadUse>(host::setOption(choice, QStringLiteral("missing"), QString::fromStdString(name)));
    if (!m_options.stateFile.empty())
        orThrow<BadUse>(host::setOption(choice, stateOption, QString::fromStdString(m_options.stateFile)));
    if (!m_options.wait.empty())
        orThrow<BadUse>(host::setOption(choice, QStringLiteral("wait"), QString::fromStdString(m_options.wait)));
    return m_choice.emplace(std::move(choice));
}

host::InstrumentSession& ConsoleSession::session()
{
    if (!m_session) {
        const host::ProviderChoice& chosen = choice();
        auto opened = orThrow<Failure>(
            withSpinner("opening " + chosen.provider.name.toStdString(), [&] { return host::openInstrument(chosen); }));
        m_instrument = std::move(opened.description);
        m_session = std::make_unique<host::InstrumentSession>(std::move(opened.connection));
    }
    return *m_session;
}

const provider::InstrumentDescription& ConsoleSession::instrument()
{
    session();
    return m_instrument;
}

ITestHooks& ConsoleSession::hooks()
{
    static NoHooks none;
    ITestHooks* const hooks = session().connection()->testHooks();
    return hooks != nullptr ? *hooks : none;
}

void ConsoleSession::confirm(const std::string& act) const
{
    if (!m_options.yes)
        askWhetherTo(act);
}

bool ConsoleSession::keepsState()
{
    return !choice().options[stateOption].toString().isEmpty();
}

void ConsoleSession::keep()
{
    if (m_session)
        orThrow<Failure>(m_session->connection()->keep());
}

void ConsoleSession::releaseControls()
{
    orThrow<Failure>(hooks().releaseControls());
    waitUntilQuiet();
}

void ConsoleSession::offerControls()
{
    orThrow<Failure>(hooks().offerControls());
    waitUntilQuiet();
}

void ConsoleSession::notify(const host::ControlName& control)
{
    orThrow<Failure>(hooks().notify(control.keys.sdk));
    waitUntilQuiet();
}

void ConsoleSession::passOnNotices()
{
    if (m_session)
        m_session->passOnNotices();
}

bool ConsoleSession::can(ITestHooks::Ability ability)
{
    const auto abilities = hooks().abilities();
    return std::ranges::find(abilities, ability) != abilities.end();
}

void ConsoleSession::passTime(std::chrono::milliseconds time)
{
    if (can(ITestHooks::Ability::PassTime)) {
        m_ahead = m_ahead.load() + time; // before anything is told of it
        orThrow<Failure>(hooks().passTime(time));
    } else {
        std::this_thread::sleep_for(time);
    }
    waitUntilQuiet();
}

void ConsoleSession::keepUp(std::chrono::milliseconds time)
{
    if (can(ITestHooks::Ability::PassTime))
        orThrow<Failure>(hooks().passTime(time));
    waitUntilQuiet();
}

std::string ConsoleSession::timestamp() const
{
    const QDateTime time = QDateTime::currentDateTime().addMSecs(m_ahead.load().count());
    const int minutes = time.offsetFromUtc() / 60;
    const auto twoDigits = [](int number) { return QString::number(number).rightJustified(2, '0'); };
    const QString offset = (minutes < 0 ? "-" : "+") + twoDigits(std::abs(minutes) / 60) + ":"
                           + twoDigits(std::abs(minutes) % 60); // also for UTC, which Qt writes as Z
    return (time.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz")) + offset).toStdString();
}

void ConsoleSession::waitUntilQuiet()
{
    if (!m_session)
        return;
    if (can(ITestHooks::Ability::WaitUntilQuiet))
        orThrow<Failure>(hooks().waitUntilQuiet());
    passOnNotices();
}

} // namespace tov::console
