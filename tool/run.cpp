#include "tool/run.h"

#include <QJsonDocument>
#include <cstdio>

#include "tool/command_line.h"
#include "tool/session.h"
#include "tool/side.h"
#include "tool/side_by_side.h"

namespace quorvex::tool {

namespace {

Result resultOf(const Request& request, int& stopSignal) {
    try {
        if (!request.command->talksToUnit())
            return request.command->run(request);
        const std::vector<Share> shares = sharesOf(request);
        if (shares.size() > 1)
            return runSideBySide(shares, stopSignal);
        return runOnPort(shares.front().request, shares.front().job, stopSignal);
    } catch (const Failure& failure) {
        return failed(failure);
    }
}

void tell(const QString& problem) {
    std::fprintf(stderr, "quorvex-tool: %s\n", qUtf8Printable(problem.trimmed()));
}

/// False when the standard output does not take it.
bool print(const QByteArray& text) {
    return std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout) ==
               static_cast<std::size_t>(text.size()) &&
           std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

QByteArray jsonOf(const Result& result, int status) {
    QJsonObject object = result.object;
    object.insert(QStringLiteral("status"), status);
    if (!result.problem.isEmpty())
        object.insert(QStringLiteral("problem"), result.problem.trimmed());
    if (qEnvironmentVariableIsSet(kTextInObject))
        object.insert(QStringLiteral("text"), result.text);
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

/// Tells what has come out; returns the exit status.
int end(const Result& result, int status, bool isJson) {
    if (!result.problem.isEmpty())
        tell(result.problem);
    if (print(isJson ? jsonOf(result, status) : result.text.toUtf8()))
        return status;
    tell(QStringLiteral("the standard output does not take the result."));
    return static_cast<int>(Status::file);
}

int runCommand(const Request& request) {
    int stopSignal = 0;
    Result result = resultOf(request, stopSignal);
    result.object.insert(QStringLiteral("command"), request.command->name);
    const int status = stopSignal != 0 ? kSignalled + stopSignal : static_cast<int>(result.status);
    return end(result, status, request.has("--json"));
}

}  // namespace

int runTool(const QStringList& words) {
    try {
        const Request request = parseCommandLine(words);
        if (request.has("--help"))
            return print(helpText(request.command).toUtf8()) ? 0 : static_cast<int>(Status::file);
        if (request.has("--version"))
            return print("quorvex-tool " QUORVEX_VERSION "\n") ? 0 : static_cast<int>(Status::file);
        return runCommand(request);
    } catch (const Failure& failure) {
        const bool isJson = words.contains(QStringLiteral("--json"));
        return end(failed(failure), static_cast<int>(failure.status()), isJson);
    }
}

}  // namespace quorvex::tool
