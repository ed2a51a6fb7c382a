#pragma once

#include <QApplication>
#include <QTest>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <type_traits>

#include "tests/support/after_failure.h"

namespace quorvex {

/// Runs one test class with the arguments of a Qt Test program; returns the status to exit with.
using TestRun = std::function<int(int argc, char** argv)>;

/// The test classes of this program by their names, without a namespace.
std::map<std::string, TestRun>& testRegistry();

/// Enters a class under the last part of `name`. The value means nothing.
bool enterTest(const std::string& name, TestRun run);

/// In place of an application, for tests that need none.
struct NoApplication {
    NoApplication(int& /*argc*/, char** /*argv*/) {}
};

template <typename TestClass, typename Application>
int runTest(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    [[maybe_unused]] const Application application(argc, argv);
    [[maybe_unused]] std::optional<ClosesAfterFailure> afterFailure;
    if constexpr (std::is_same_v<Application, QApplication>)
        afterFailure.emplace();
    TestClass test;
    return QTest::qExec(&test, argc, argv);
}

}  // namespace quorvex

#define QUORVEX_JOINED(first, second) first##second
#define QUORVEX_ENTERED(number) QUORVEX_JOINED(isTestEntered, number)

/// At the end of a test file: the file's test class, and the application that it needs, one of NoApplication,
/// QCoreApplication and QApplication. Several files are compiled as one, so each gets a name of its own.
#define QUORVEX_TEST(TestClass, Application)                          \
    [[maybe_unused]] static const bool QUORVEX_ENTERED(__COUNTER__) = \
        quorvex::enterTest(#TestClass, quorvex::runTest<TestClass, Application>);
