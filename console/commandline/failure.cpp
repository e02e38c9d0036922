#include "console/commandline/failure.h"

#include "console/terminal/terminal.h"
#include "tools/errors.h"
#include "tools/text/display.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <iostream>

namespace tov::console {

namespace {

ExitStatus fail(ExitStatus status, std::string line, const FailureForm& form)
{
    std::ranges::replace(line, '\n', ' ');
    line = displayed(line);
    if (!form.json) {
        std::cerr << "service-console: " << form.place << line << "\n";
        return status;
    }
    const QJsonObject error{{"status", static_cast<int>(status)}, {"message", QString::fromStdString(line)}};
    QJsonObject object{{"error", error}};
    if (form.command > 0)
        object["command"] = form.command;
    std::cerr << QJsonDocument(object).toJson(QJsonDocument::Compact).constData() << "\n";
    return status;
}

} // namespace

ExitStatus failAsCaught(const FailureForm& form)
try {
    throw;
} catch (const Failure& error) {
    return fail(ExitStatus::Failure, error.what(), form);
} catch (const BadUse& error) {
    return fail(ExitStatus::BadUse, error.what(), form);
} catch (const OutputLost& error) { // a reader that has gone had what it wanted
    return standardOutputIsUnread() ? ExitStatus::InternalError : fail(ExitStatus::InternalError, error.what(), form);
} catch (const std::exception& error) {
    return fail(ExitStatus::InternalError, std::string("internal error: ") + error.what(), form);
} catch (...) { // of a provider's
    return fail(ExitStatus::InternalError, "internal error", form);
}

} // namespace tov::console
