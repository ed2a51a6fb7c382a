#include <QTest>
#include <limits>

#include "link/number_text.h"
#include "link/runtime_fault.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

/// The number of the fault that `something` raises; 0 for none.
template <typename Something>
int faultOf(Something something) {
    try {
        something();
    } catch (const RuntimeFault& fault) {
        return fault.number();
    }
    return 0;
}

constexpr int kOverflow = 6;
constexpr int kTypeMismatch = 13;

}  // namespace

/// Numbers to digits and back, by the rules of the wire.
class TestNumberText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hexPad_data();
    void hexPad();
    void hexPadOfSmallTypes();
    void nibbleToOffset_data();
    void nibbleToOffset();
    void offsetToNibble_data();
    void offsetToNibble();
    void offsetsSurviveTheRoundTrip();
    void hexDigits();
    void sameHex();
    void readsHex_data();
    void readsHex();
    void readsDecimal_data();
    void readsDecimal();
    void strict_data();
    void strict();
    void strictRefuses_data();
    void strictRefuses();
    void rounds_data();
    void rounds();
    void outOfRange();
    void cuts_data();
    void cuts();
    void trims();
    void showsAsPrintable_data();
    void showsAsPrintable();
};

void TestNumberText::hexPad_data() {
    QTest::addColumn<qint64>("value");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("digits");
    QTest::newRow("padded") << qint64{10} << 2 << "0A";
    QTest::newRow("longer is not cut") << qint64{300} << 2 << "12C";
    QTest::newRow("fits") << qint64{255} << 2 << "FF";
    QTest::newRow("zero") << qint64{0} << 2 << "00";
    QTest::newRow("zero, width 1") << qint64{0} << 1 << "0";
    QTest::newRow("zero, width 0") << qint64{0} << 0 << "0";
    QTest::newRow("negative width") << qint64{171} << -3 << "AB";
    QTest::newRow("wide") << qint64{0xEC} << 10 << "00000000EC";
    QTest::newRow("upper case") << qint64{0xABCDEF} << 6 << "ABCDEF";
    QTest::newRow("largest") << qint64{0xFFFFFFFF} << 8 << "FFFFFFFF";
    QTest::newRow("highest bit") << qint64{0x80000000} << 2 << "80000000";
}

void TestNumberText::hexPad() {
    QFETCH(qint64, value);
    QFETCH(int, width);
    QFETCH(QString, digits);
    QCOMPARE(shown(HexPad(static_cast<std::uint32_t>(value), width)), digits);
    QCOMPARE(shown(HexPad(static_cast<std::int32_t>(value), width)), digits);
}

void TestNumberText::hexPadOfSmallTypes() {
    QCOMPARE(shown(HexPad(std::int16_t{-5}, 2)), "FFFB");
    QCOMPARE(shown(HexPad(std::int32_t{-5}, 2)), "FFFFFFFB");
    QCOMPARE(shown(HexPad(std::int16_t{0x15}, 2)), "15");
    QCOMPARE(shown(HexPad(std::numeric_limits<std::int16_t>::min(), 2)), "8000");
}

void TestNumberText::nibbleToOffset_data() {
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("offset");
    const int offsets[] = {-7, -6, -5, -4, -3, -2, -1, 0, 7, 6, 5, 4, 3, 2, 1, 0};
    for (int code = 0; code <= 15; ++code)
        QTest::addRow("%d", code) << code << offsets[code];
}

void TestNumberText::nibbleToOffset() {
    QFETCH(int, code);
    QFETCH(int, offset);
    QCOMPARE(NibbleToOffset(code), offset);
}

void TestNumberText::offsetToNibble_data() {
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("code");
    const int codes[] = {0, 1, 2, 3, 4, 5, 6, 7, 14, 13, 12, 11, 10, 9, 8};
    for (int offset = -7; offset <= 7; ++offset)
        QTest::addRow("%d", offset) << offset << codes[offset + 7];
}

void TestNumberText::offsetToNibble() {
    QFETCH(int, offset);
    QFETCH(int, code);
    QCOMPARE(OffsetToNibble(offset), code);
}

void TestNumberText::offsetsSurviveTheRoundTrip() {
    for (int offset = -7; offset <= 7; ++offset)
        QCOMPARE(NibbleToOffset(OffsetToNibble(offset)), offset);
}

void TestNumberText::hexDigits() {
    const QByteArray digits("0123456789abcdefABCDEF");
    for (int value = 0; value < 256; ++value) {
        const char c = static_cast<char>(value);
        QCOMPARE(isHexDigit(c), digits.contains(c));
    }
}

void TestNumberText::sameHex() {
    QVERIFY(isSameHex("1F", "1f"));
    QVERIFY(isSameHex("", ""));
    QVERIFY(!isSameHex("1F", "1E"));
    QVERIFY(!isSameHex("1F", "1F0"));
    QVERIFY(!isSameHex("1F0", "1F"));
}

void TestNumberText::readsHex_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<quint64>("value");
    const auto row = [](const char* name, const QByteArray& text, quint64 value) {
        QTest::newRow(name) << text << value;
    };
    row("two digits", "FF", 255);
    row("never negative at 16 bits", "FFFF", 65535);
    row("never negative at 32 bits", "FFFFFFFF", 4294967295U);
    row("ten digits", "FFFFFFFFFF", 1099511627775U);
    row("lower case", "1f", 31);
    row("mixed case", "aBcD", 0xABCD);
    row("leading zeros", "00000186A0", 100000);
    row("empty", "", 0);
    row("no digit", "N/A", 0);
    row("trailing blank ends the digits", "1F        ", 31);
    row("blank within ends the digits", "1 F", 1);
    row("leading blank", " 1F", 0);
    row("ends at another letter", "12G4", 0x12);
    row("sign is no digit", "-1", 0);
    row("largest", "FFFFFFFFFFFFFFFF", std::numeric_limits<quint64>::max());
    row("larger than the largest", "10000000000000000", std::numeric_limits<quint64>::max());
}

void TestNumberText::readsHex() {
    QFETCH(QByteArray, text);
    QFETCH(quint64, value);
    QCOMPARE(static_cast<quint64>(hexValue(bytesOf(text))), value);
}

void TestNumberText::readsDecimal_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("value");
    const auto row = [](const char* name, const QByteArray& text, double value) {
        QTest::newRow(name) << text << value;
    };
    row("two digits", "12", 12);
    row("leading zero", "02", 2);
    row("value field", "02        ", 2);
    row("hexadecimal digit first", "A5", 0);
    row("hexadecimal digit second", "0A", 0);
    row("hexadecimal digit behind 1", "1F", 1);
    row("E is no exponent without digits", "1E", 1);
    row("no value", "N/A", 0);
    row("blank", "          ", 0);
    row("empty", "", 0);
    row("blanks in front", "  7", 7);
    row("other blanks", "\t1\r\n2", 12);
    row("negative", "-3", -3);
    row("plus", "+3", 3);
    row("fraction", "2.5", 2.5);
    row("second point ends it", "1.2.3", 1.2);
    row("sign alone", "-", 0);
    row("point alone", ".", 0);
    row("ten digits", "1234567890", 1234567890);
    for (char digit = '1'; digit <= '9'; ++digit)
        row(qPrintable(QString("too large, of %1 alone").arg(digit)), QByteArray(400, digit),
            std::numeric_limits<double>::max());
    row("too large below 0", "-" + QByteArray(400, '9') + ".5", std::numeric_limits<double>::lowest());
    row("too small for a double", "0." + QByteArray(400, '0') + "1", 0);
    row("too small, without a digit in front", "-." + QByteArray(400, '0') + "1", 0);
}

void TestNumberText::readsDecimal() {
    QFETCH(QByteArray, text);
    QFETCH(double, value);
    QCOMPARE(decimalValue(bytesOf(text)), value);
}

void TestNumberText::strict_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("digit") << QByteArray("3") << 3.0;
    QTest::newRow("leading zeros") << QByteArray("0012") << 12.0;
    QTest::newRow("blanks around") << QByteArray("  1 ") << 1.0;
    QTest::newRow("other blanks around") << QByteArray("\t\r\n5\n\r\t") << 5.0;
    QTest::newRow("availability field") << QByteArray("1 ") << 1.0;
    QTest::newRow("negative") << QByteArray("-4") << -4.0;
    QTest::newRow("plus") << QByteArray("+4") << 4.0;
    QTest::newRow("fraction") << QByteArray("1.5") << 1.5;
}

void TestNumberText::strict() {
    QFETCH(QByteArray, text);
    QFETCH(double, value);
    QCOMPARE(strictNumber(bytesOf(text)), value);
}

void TestNumberText::strictRefuses_data() {
    QTest::addColumn<QByteArray>("text");
    for (const char* text :
         {"", "  ", "COM3", "3x", "x3", "3 4", "-", "+", ".", "1.2.3", "--1", "0x1F", "1F"})
        QTest::addRow("'%s'", text) << QByteArray(text);
}

void TestNumberText::strictRefuses() {
    QFETCH(QByteArray, text);
    QCOMPARE(faultOf([&] { strictNumber(bytesOf(text)); }), kTypeMismatch);
}

void TestNumberText::rounds_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("whole");
    QTest::newRow("whole") << 12.0 << 12;
    QTest::newRow("down") << 1.4 << 1;
    QTest::newRow("up") << 1.6 << 2;
    QTest::newRow("half to even below") << 2.5 << 2;
    QTest::newRow("half to even above") << 3.5 << 4;
    QTest::newRow("half to zero") << 0.5 << 0;
    QTest::newRow("negative half") << -1.5 << -2;
    QTest::newRow("largest") << 32767.4 << 32767;
    QTest::newRow("lowest") << -32768.5 << -32768;
}

void TestNumberText::rounds() {
    QFETCH(double, value);
    QFETCH(int, whole);
    QCOMPARE(static_cast<int>(toInt16(value)), whole);
    QCOMPARE(static_cast<int>(toInt32(value)), whole);
}

void TestNumberText::outOfRange() {
    QCOMPARE(faultOf([] { toInt16(32767.5); }), kOverflow);
    QCOMPARE(faultOf([] { toInt16(-32769); }), kOverflow);
    QCOMPARE(faultOf([] { toInt16(std::numeric_limits<double>::max()); }), kOverflow);
    QCOMPARE(faultOf([] { toInt16(std::numeric_limits<double>::quiet_NaN()); }), kOverflow);
    QCOMPARE(toInt32(2147483647.0), std::numeric_limits<std::int32_t>::max());
    QCOMPARE(toInt32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
    QCOMPARE(faultOf([] { toInt32(2147483648.0); }), kOverflow);
    QCOMPARE(faultOf([] { toInt32(-2147483649.0); }), kOverflow);
    // A number of any length is still a number, only too large.
    QCOMPARE(faultOf([] { toInt16(strictNumber(std::string(400, '9'))); }), kOverflow);
    QCOMPARE(faultOf([] { toInt16(decimalValue("-" + std::string(400, '9'))); }), kOverflow);
}

void TestNumberText::cuts_data() {
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("part");
    QTest::newRow("before the first") << 0 << 3 << "";
    QTest::newRow("first") << 1 << 1 << "a";
    QTest::newRow("inner") << 2 << 3 << "bcd";
    QTest::newRow("last") << 6 << 1 << "f";
    QTest::newRow("past the end") << 5 << 9 << "ef";
    QTest::newRow("behind the end") << 7 << 1 << "";
    QTest::newRow("none") << 3 << 0 << "";
}

void TestNumberText::cuts() {
    QFETCH(int, position);
    QFETCH(int, count);
    QFETCH(QString, part);
    QCOMPARE(shown(middle("abcdef", static_cast<std::size_t>(position), static_cast<std::size_t>(count))),
             part);
}

void TestNumberText::trims() {
    QCOMPARE(shown(middle("abcdef", 3)), "cdef");
    QCOMPARE(shown(trimmedRight(" N/A       ")), " N/A");
    QCOMPARE(shown(trimmedRight("   ")), "");
    QCOMPARE(shown(trimmedRight("")), "");
}

void TestNumberText::showsAsPrintable_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << QByteArray("N/A ~!") << "N/A ~!";
    QTest::newRow("control characters") << QByteArray(
                                               "a\r\n\x7F"
                                               "b")
                                        << "a???b";
    QTest::newRow("Latin-1") << QByteArray("\xA0\xE9\xFF") << QString::fromUtf8("\u00A0\u00E9\u00FF");
    QTest::newRow("Latin-1 control characters") << QByteArray("\x80\x9F") << "??";
    QTest::newRow("zero byte") << QByteArray("a\0b", 3) << "a?b";
    QTest::newRow("empty") << QByteArray() << "";
}

void TestNumberText::showsAsPrintable() {
    QFETCH(QByteArray, text);
    QFETCH(QString, shown);
    // A message is UTF-8, the wire is not.
    QCOMPARE(QString::fromStdString(printable(bytesOf(text))), shown);
}

QUORVEX_TEST(TestNumberText, quorvex::NoApplication)
#include "test_number_text.moc"
