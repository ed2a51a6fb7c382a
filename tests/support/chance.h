#pragma once

#include <QtGlobal>
#include <random>

namespace quorvex {

/// Random numbers of a test, the same for the same seed.
struct Chance {
    std::mt19937& numbers;
    /// 0 to `most`.
    int upTo(int most) const { return std::uniform_int_distribution<int>(0, most)(numbers); }
    bool oneIn(int count) const { return upTo(count - 1) == 0; }
    template <typename Values>
    auto& oneOf(Values& values) const {
        return values[static_cast<typename Values::size_type>(upTo(static_cast<int>(values.size()) - 1))];
    }
};

/// The seed of a storm, printed. QUORVEX_STORM_SEED asks for another one, to repeat a failure.
inline unsigned stormSeed() {
    bool given = false;
    const int asked = qEnvironmentVariableIntValue("QUORVEX_STORM_SEED", &given);
    const unsigned seed = given ? static_cast<unsigned>(asked) : 20'240'611U;
    qInfo("seed %u", seed);
    return seed;
}

}  // namespace quorvex
