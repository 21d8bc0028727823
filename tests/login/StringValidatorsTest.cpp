#include "login/form/StringValidators.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Predicate = bool (*)(const QString &);

struct Rule
{
    const char *name;
    Predicate holds;
    QStringList taken;
    QStringList refused;
};

const QString fourteenDigits(14, u'3');
const QString seventeenDigits(17, u'3');
const QString arabicDigits(10, QChar(0x0665));

const QList<Rule> rules {
    {"isEmail", StringValidators::isEmail, {u"a@b.cn"_s, u"A9._%+-@b-c.d.info"_s, u"x@1.2.com"_s},
        {u"a@b.c"_s, u"a@b.inform"_s, u"a@b.c1"_s, u"@b.cn"_s, u"a@cn"_s, u"林@b.cn"_s,
            u"a b@b.cn"_s, u"a@b.cn "_s, u"a@b.cn\n"_s, u""_s}},
    {"isUrl", StringValidators::isUrl,
        {u"http://a.b"_s, u"https://a-b.c_d.cn/"_s, u"http://a.b/x y-z_1.do?q=%20&r=/"_s},
        {u"ftp://a.b"_s, u"httpss://a.b"_s, u"http://a"_s, u"http://a..b"_s, u"http://a.b:80"_s,
            u"http://a.b/#x"_s, u"http://a.b?q"_s, u"http://学.cn"_s, u"see http://a.b"_s}},
    {"isMobilephone", StringValidators::isMobilephone, {u"10000000000"_s, u"99999999999"_s},
        {u"01000000000"_s, u"1000000000"_s, u"100000000000"_s, u"1000000000x"_s, u"10000000000\n"_s,
            u"１0000000000"_s, u"1"_s + arabicDigits}},
    {"isChineseName", StringValidators::isChineseName, {u"一龥"_s, QString(16, u'林')},
        {u"林"_s, QString(17, u'林'), u"诸葛·明"_s, u"林a"_s, u"林 明"_s, u"\u4dff林"_s,
            u"\u9fa6林"_s, u"𠮷林"_s}},
    {"isIdentityCard", StringValidators::isIdentityCard,
        {fourteenDigits + u'0', fourteenDigits + u'x', seventeenDigits + u'X',
            seventeenDigits + u'x', seventeenDigits + u'9', QString(18, u'0')},
        {fourteenDigits, fourteenDigits + u"00"_s, seventeenDigits, seventeenDigits + u"00"_s,
            seventeenDigits + u'y', u"x"_s + seventeenDigits, seventeenDigits + u"x\n"_s,
            u" "_s + seventeenDigits + u'x', seventeenDigits + QChar(0x0665)}},
    {"isTelephone", StringValidators::isTelephone,
        {u"13000000000"_s, u"13900000000"_s, u"15000000000"_s, u"15300000000"_s, u"15500000000"_s,
            u"18000000000"_s, u"18200000000"_s, u"18500000000"_s, u"18900000000"_s,
            u"13490000000"_s, u"01012345678"_s, u"0101234567"_s, u"0201234567"_s, u"0291234567"_s,
            u"05921234567"_s, u"059212345678"_s, u"02312345678"_s},
        {u"14700000000"_s, u"15400000000"_s, u"16600000000"_s, u"17000000000"_s, u"18100000000"_s,
            u"18300000000"_s, u"18400000000"_s, u"19900000000"_s, u"1300000000"_s,
            u"130000000000"_s, u"010123456"_s, u"021123456"_s, u"0261234567"_s, u"0592123456789"_s,
            u"1012345678"_s, u"010-12345678"_s}},
    {"isIPAddress", StringValidators::isIPAddress,
        {u"0.0.0.0"_s, u"254.254.254.254"_s, u"1..2.3"_s, u"..."_s, u"001.2.3.4"_s,
            u"000000000000000000000000.1.2.3"_s},
        {u"255.255.255.0"_s, u"10.0.0.255"_s, u"1.2.3.256"_s, u"1.2.3"_s, u"1.2.3.4.5"_s, u""_s,
            u"1.2.3.4 "_s, u"1.-2.3.4"_s, u"1.+2.3.4"_s, u"1.2.3.0x4"_s, u"1.2.3.٤"_s,
            u"1.2.3.18446744073709551616"_s}},
};

}

class StringValidatorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void judgesWholeTexts_data()
    {
        QTest::addColumn<Predicate>("holds");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("expected");
        for (const Rule &rule : rules) {
            for (const bool expected : {true, false}) {
                for (const QString &text : expected ? rule.taken : rule.refused)
                    QTest::addRow(
                        "%s %s: <%s>", rule.name, expected ? "takes" : "refuses", qPrintable(text))
                        << rule.holds << text << expected;
            }
        }
    }

    void judgesWholeTexts()
    {
        QFETCH(const Predicate, holds);
        QFETCH(const QString, text);
        QTEST(holds(text), "expected");
    }
};

QTEST_GUILESS_MAIN(StringValidatorsTest)
#include "StringValidatorsTest.moc"
