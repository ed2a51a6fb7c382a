#include "tool/beltpack_commands.h"

#include "beltpack/settings_summary.h"
#include "link/number_text.h"
#include "link/qt_text.h"
#include "tool/plain_window.h"
#include "tool/settings_files.h"
#include "tool/units.h"
#include "tool/values.h"
#include "tool/written.h"

namespace quorvex::tool {

namespace {

void demandRead(PlainWindow& window) {
    const QString problem = window.readBeltpack();
    if (!problem.isEmpty())
        throw Failure(Status::noAnswer, problem);
}

QJsonObject unitObject(const PlainWindow& window) {
    return {{QStringLiteral("psn"), psnOf(window.found())},
            {QStringLiteral("parameters"), jsonOf(valuesOf(window.found()))}};
}

void save(Result& result, const QString& path, const SettingsImage& image) {
    try {
        saveSettings(path, image);
        result.text += QStringLiteral("Saved in %1.\n").arg(path);
        result.object.insert(QStringLiteral("file"), path);
    } catch (const Failure& failure) {
        result.status = failure.status();
        result.problem = failure.problem();
    }
}

Result read(PlainWindow& window, const QString& path) {
    demandRead(window);
    Facts radio;
    addModule(radio, window.module, window.beltpack);
    if (!window.rssiThreshold.text().empty())
        radio.add("RSSI Threshold", window.rssiThreshold);
    if (const QString version = window.dectVersion(); !version.isEmpty())
        radio.add("DECT Version", version);
    Result result;
    result.text = QStringLiteral("PSN %1\n\n").arg(psnOf(window.found())) +
                  fromLatin1(summaryText(window.found())).remove(QLatin1Char('\r')) + QLatin1Char('\n') +
                  radio.text();
    result.object = unitObject(window);
    result.object.insert(QStringLiteral("radio"), radio.object());
    if (!path.isEmpty())
        save(result, path, window.found());
    return result;
}

struct WriteOrder {
    QString path;
    Values file;
    bool withIdentity, dryRun;
};

/// What a write of the file makes of a unit.
struct Plan {
    Values found, wanted;
    std::vector<int> written;
    QStringList notThere;        ///< parameters that have a value in the file and are not in the unit
    bool keepsIdentity = false;  ///< the unit has another one than the file
};

Plan planOf(const WriteOrder& order, const Values& found) {
    Plan plan{found, found, {}, {}, false};
    for (int record = 0; record < SettingsImage::kParameters; ++record) {
        const auto at = static_cast<std::size_t>(record);
        if (!isAvailable(order.file[at]))
            continue;
        if (isIdentity(record) && !order.withIdentity) {
            plan.keepsIdentity = plan.keepsIdentity || !isSameHex(order.file[at], found[at]);
        } else if (!isAvailable(found[at])) {
            plan.notThere << nameOf(record);
        } else {
            plan.wanted[at] = order.file[at];
            plan.written.push_back(record);
        }
    }
    return plan;
}

void tellPlan(Result& result, const Plan& plan, const WriteOrder& order) {
    if (!plan.notThere.isEmpty())
        result.text += QStringLiteral("Not in this unit, so not written: %1.\n")
                           .arg(plan.notThere.join(QStringLiteral(", ")));
    if (plan.keepsIdentity)
        result.text +=
            QStringLiteral("PSN and System Id are left as they are; --with-identity writes them.\n");
    result.object.insert(QStringLiteral("file"), order.path);
    result.object.insert(QStringLiteral("dryRun"), order.dryRun);
    result.object.insert(QStringLiteral("notInUnit"), QJsonArray::fromStringList(plan.notThere));
}

Result dryRun(const PlainWindow& window, const Plan& plan) {
    const auto changes = differences(plan.found, plan.wanted);
    Result result;
    result.text = QStringLiteral("PSN %1: %2 would change.\n")
                      .arg(psnOf(window.found()))
                      .arg(countOf(changes.size(), "parameter"));
    result.text += textOf(changes, QStringLiteral("->"));
    result.object = {{QStringLiteral("psn"), psnOf(window.found())},
                     {QStringLiteral("changes"), jsonOf(changes, "before", "after")}};
    return result;
}

Result write(PlainWindow& window, const WriteOrder& order) {
    demandRead(window);
    const Plan plan = planOf(order, valuesOf(window.found()));
    Result result = order.dryRun ? dryRun(window, plan) : writeAndCompare(window, plan.written, [&] {
        // What the unit does not have is not written; so what is to stay is
        // taken for that.
        for (int record = 0; record < SettingsImage::kParameters; ++record)
            window.image[record].available = "0";
        for (const int record : plan.written) {
            window.image[record].available = "1";
            window.image[record].value = plan.wanted[static_cast<std::size_t>(record)];
        }
        window.write.CommandWrite_Click();
    });
    tellPlan(result, plan, order);
    return result;
}

Result verify(PlainWindow& window, const QString& path, const Values& file, bool withoutIdentity) {
    demandRead(window);
    auto found = differences(file, valuesOf(window.found()));
    if (withoutIdentity)
        std::erase_if(found, [](const Difference& each) { return isIdentity(each.record); });
    Result result;
    result.status = found.empty() ? Status::done : Status::differs;
    const QString unit = QStringLiteral("PSN %1").arg(psnOf(window.found()));
    if (found.empty())
        result.text = QStringLiteral("%1 holds what is in %2.\n").arg(unit, path);
    else
        result.text = QStringLiteral("%1 differs from %2 in %3.\n")
                          .arg(unit, path, countOf(found.size(), "parameter")) +
                      textOf(found, QStringLiteral("in the file, in the unit"));
    result.object = unitObject(window);
    result.object.insert(QStringLiteral("file"), path);
    result.object.insert(QStringLiteral("differences"), jsonOf(found, "file", "unit"));
    return result;
}

/// The window writes whatever is there when there are no values for a revision.
void demandRevision(const SettingsImage& image) {
    const Parameter& featureMap = image[SettingsImage::kFeatureMap];
    if (!featureMap.isAvailable() ||
        hexValue(featureMap.value.str()) > static_cast<unsigned>(featureMap.highest))
        throw Failure(
            Status::differs,
            QStringLiteral("There are no production values for this Beltpack: %1 is %2, not 00 to %3. "
                           "Nothing was written.")
                .arg(nameOf(SettingsImage::kFeatureMap),
                     fromUtf8(printable(trimmedRight(featureMap.value.str()))),
                     fromLatin1(HexPad(featureMap.highest, 2))));
}

Result setProductionValues(PlainWindow& window) {
    demandRead(window);
    demandRevision(window.found());
    std::vector<int> written;
    for (int record = 0; record < SettingsImage::kParameters; ++record) {
        if (window.found()[record].isAvailable())
            written.push_back(record);
    }
    return writeAndCompare(window, written, [&] { window.production.buttonSetProdSettiings_Click(); });
}

}  // namespace

UnitJob prepareRead(const Request& request) {
    const QString path = request.arguments.value(0);
    if (!path.isEmpty())
        demandSavable(path);
    return [path](PlainWindow& window) { return read(window, path); };
}

UnitJob prepareWrite(const Request& request) {
    const QString path = request.arguments.at(0);
    const WriteOrder order{path, valuesOf(loadSettings(path, Ranges::demanded)),
                           request.has("--with-identity"), request.has("--dry-run")};
    return [order](PlainWindow& window) { return write(window, order); };
}

UnitJob prepareVerify(const Request& request) {
    const QString path = request.arguments.at(0);
    return [path, file = valuesOf(loadSettings(path, Ranges::anyValue)),
            withoutIdentity = request.has("--without-identity")](PlainWindow& window) {
        return verify(window, path, file, withoutIdentity);
    };
}

UnitJob prepareProductionValues(const Request& /*request*/) {
    return setProductionValues;
}

QStringList identitiesOfWrite(const Request& request) {
    if (!request.has("--with-identity"))
        return {};
    const Values values = valuesOf(loadSettings(request.arguments.at(0), Ranges::demanded));
    const std::string& psn = values[SettingsImage::kPsn];
    return isAvailable(psn) ? QStringList(identityOf(SettingsImage::kPsn, psn)) : QStringList();
}

QStringList savesOfRead(const Request& request) {
    return request.arguments;
}

}  // namespace quorvex::tool
