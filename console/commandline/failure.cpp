#include "console/commandline/failure.h"

#include "console/errors.h"
#include "console/terminal/terminal.h"
#include "console/text/display.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <iostream>

namespace tov::console {

ExitStatus fail(ExitStatus status, std::string line, bool asJson, int command)
{
    std::ranges::replace(line, '\n', ' ');
    line = displayed(line);
    if (!asJson) {
        std::cerr << "service-console: " << line << "\n";
        return status;
    }
    const QJsonObject error{{"status", static_cast<int>(status)}, {"message", QString::fromStdString(line)}};
    QJsonObject object{{"error", error}};
    if (command > 0)
        object["command"] = command;
    std::cerr << QJsonDocument(object).toJson(QJsonDocument::Compact).constData() << "\n";
    return status;
}

ExitStatus failAsCaught(bool asJson)
try {
    throw;
} catch (const Failure& error) {
    return fail(ExitStatus::Failure, error.what(), asJson);
} catch (const BadUse& error) {
    return fail(ExitStatus::BadUse, error.what(), asJson);
} catch (const OutputLost& error) { // a reader that has gone had what it wanted
    return standardOutputIsUnread() ? ExitStatus::InternalError : fail(ExitStatus::InternalError, error.what(), asJson);
} catch (const std::exception& error) {
    return fail(ExitStatus::InternalError, std::string("internal error: ") + error.what(), asJson);
} catch (...) { // of a provider's
    return fail(ExitStatus::InternalError, "internal error", asJson);
}

} // namespace tov::console
