#include "tool/shares.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <utility>

namespace quorvex::tool {

namespace {

const QString kPlaceOfPort = QStringLiteral("{port}");

/// Throws Failure for two names of one port.
std::vector<NamedPort> portsNamed(const QStringList& names) {
    std::vector<NamedPort> ports;
    QMap<QString, QString> nameOf;  // by device
    for (const QString& name : names) {
        ports.push_back(portNamed(name));
        const PortDevice& device = ports.back().device;
        const QString where = device.path.isEmpty() ? device.asked : device.path;
        if (nameOf.contains(where))
            throw Failure(Status::wrongUse,
                          QStringLiteral("--port: %1 and %2 are the same port.").arg(nameOf[where], name));
        nameOf.insert(where, name);
    }
    return ports;
}

Request requestFor(const NamedPort& port, Request request) {
    const QString name = port.name.section(QLatin1Char('/'), -1);
    request.arguments.replaceInStrings(kPlaceOfPort, name);
    for (QString& value : request.options)
        value.replace(kPlaceOfPort, name);
    request.options.insert(QStringLiteral("--port"), port.name);
    return request;
}

/// The same for all names of a file.
QString fileOf(const QString& name) {
    const QFileInfo info(name);
    return info.exists() ? info.canonicalFilePath() : QDir::cleanPath(info.absoluteFilePath());
}

QStringList filesWritten(const Request& request) {
    QStringList files = request.command->saves ? request.command->saves(request) : QStringList();
    files << request.value("--trace");
    files.removeAll(QString());
    for (QString& file : files)
        file = fileOf(file);
    return files;
}

void demandTraceOfItsOwn(const Request& request) {
    const QString trace = request.value("--trace");
    QStringList files = request.arguments;
    if (request.command->saves)
        files << request.command->saves(request);
    for (const QString& file : std::as_const(files)) {
        if (!trace.isEmpty() && fileOf(trace) == fileOf(file))
            throw Failure(
                Status::wrongUse,
                QStringLiteral("--trace: %1 is what the command works on; name another file.").arg(trace));
    }
}

QStringList identitiesGiven(const Request& request) {
    return request.command->identities ? request.command->identities(request) : QStringList();
}

/// Throws Failure where two shares have one of `things` in common; it says what comes of it, then `advice`.
void demandOwn(const std::vector<Share>& shares, QStringList (*things)(const Request&), const QString& verb,
               const QString& advice) {
    QMap<QString, QString> portOf;  // by thing
    for (const Share& share : shares) {
        for (const QString& thing : things(share.request)) {
            const QString other = portOf.value(thing, share.port.name);
            if (other != share.port.name)
                throw Failure(Status::wrongUse, QStringLiteral("%1 would be %2 for %3 and for %4: %5.")
                                                    .arg(thing, verb, other, share.port.name, advice));
            portOf.insert(thing, other);
        }
    }
}

}  // namespace

QStringList Share::words() const {
    QStringList words;
    for (const Option& option : request.command->allOptions()) {
        if (request.options.contains(option.name))
            words << (option.value.isEmpty()
                          ? option.name
                          : option.name + QLatin1Char('=') + request.options.value(option.name));
    }
    return words << request.command->name << request.arguments;
}

std::vector<Share> sharesOf(const Request& request) {
    if (!request.has("--port")) {
        demandTraceOfItsOwn(request);
        return {{{}, request, request.command->prepare(request)}};
    }
    const auto ports = portsNamed(request.value("--port").split(QLatin1Char(',')));
    std::vector<QStringList> arguments(ports.size(), request.arguments);
    if (ports.size() > 1 && request.command->deal)
        arguments = request.command->deal(request.arguments, ports.size());
    std::vector<Share> shares;
    for (std::size_t i = 0; i < ports.size(); ++i) {
        Request own = request;
        own.arguments = arguments[i];
        shares.push_back({ports[i], requestFor(ports[i], std::move(own)), {}});
    }
    for (const Share& share : shares)
        demandTraceOfItsOwn(share.request);
    demandOwn(shares, filesWritten, QStringLiteral("written"),
              QStringLiteral("put {port} into its name, which becomes the name of the port"));
    demandOwn(shares, identitiesGiven, QStringLiteral("set"),
              QStringLiteral("it says which unit it is, so give each port another one"));
    for (Share& share : shares)
        share.job = request.command->prepare(share.request);
    return shares;
}

}  // namespace quorvex::tool
