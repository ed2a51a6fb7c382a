#include "tests/support/beltpack_bench.h"

namespace quorvex {

// Written out, so that a mistake in the program's own table cannot repeat itself here.
const std::array<ParameterLines, 21> BeltpackBench::kParameters{{
    {"# 0101", "# 0681", "0044303039"}, {"# 0102", "# 0282", "1F"},
    {"# 0103", "# 0683", "100ECE1000"}, {"# 0104", "# 0284", "30"},
    {"# 0105", "# 0285", "00"},         {"# 0106", "# 0286", "01"},
    {"# 0107", "# 0287", "01"},         {"# 0108", "# 0288", "02"},
    {"# 0109", "# 0289", "03"},         {"# 010A", "# 028A", "04"},
    {"# 010B", "# 028B", "10"},         {"# 010C", "# 028C", "05"},
    {"# 010D", "# 028D", "06"},         {"# 010E", "# 068E", "03FF00000F"},
    {"# 010F", "# 028F", "07"},         {"# 0110", "# 0290", "01"},
    {"# 0111", "# 0291", "08"},         {"# 0112", "# 0292", "09"},
    {"# 0113", "# 0293", "0A"},         {"# 0114", "# 0294", "0B"},
    {"# 0115", "# 0295", "02"},
}};

void BeltpackBench::connectParameters() {
    for (std::size_t i = 0; i < kParameters.size(); ++i)
        setDigits(static_cast<int>(i), kParameters[i].digits);
    port.answer("# 013D", "# 02BD21\r\n");
}

void BeltpackBench::connectRm5() {
    connectParameters();
    port.answer("# 0139", "# 01BF\r\n");
    port.answer("# 013C", "# 02BC0A\r\n");
}

void BeltpackBench::connectKirk() {
    connectParameters();
    port.answer("# 0139", "# 02B9A3\r\n");
    port.answer("# 013C", "# 02BC0A\r\n");
    port.answer("# 013a", "# 02BA0C\r\n");
    port.answer("# 0138", "# 02B848\r\n");
}

void BeltpackBench::setDigits(int index, const std::string& digits) {
    const ParameterLines& lines = kParameters.at(static_cast<std::size_t>(index));
    port.answer(lines.request, lines.head + digits + "\r\n");
}

QStringList BeltpackBench::values() const {
    QStringList all;
    for (int i = 0; i <= 20; ++i)
        all.append(fromLatin1(image[i].value.str()));
    return all;
}

QStringList BeltpackBench::afterLastLine() const {
    const QStringList& entries = journal.entries();
    qsizetype last = entries.size() - 1;
    while (last >= 0 && !entries.at(last).startsWith(QLatin1String("> ")))
        --last;
    return entries.mid(last + 1);
}

}  // namespace quorvex
