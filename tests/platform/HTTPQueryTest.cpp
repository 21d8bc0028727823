#include "platform/HTTPQuery.h"

#include <QTest>

using namespace Qt::StringLiterals;

class HTTPQueryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void encodes_data();
    void encodes();
    void appendsToTheAddress_data();
    void appendsToTheAddress();
};

void HTTPQueryTest::encodes_data()
{
    QTest::addColumn<HTTPParameters>("parameters");
    QTest::addColumn<QByteArray>("query");

    QTest::newRow("nothing") << HTTPParameters {} << ""_ba;
    QTest::newRow("in the order of the names")
        << HTTPParameters {{u"start"_s, u"s"_s}, {u"Z"_s, u"1"_s}, {u"action"_s, u"a/b"_s}}
        << "Z=1&action=a%2Fb&start=s"_ba;
    QTest::newRow("an empty value stays, a missing one does not")
        << HTTPParameters {{u"empty"_s, u""_s}, {u"null"_s, QString()}, {u"none"_s, QVariant()}}
        << "empty="_ba;
    QTest::newRow("numbers and booleans")
        << HTTPParameters {{u"n"_s, -3}, {u"b"_s, true}, {u"d"_s, 24.5}} << "b=true&d=24.5&n=-3"_ba;
    QTest::newRow("every reserved character")
        << HTTPParameters {{u"p"_s, uR"(:/?#[]@!$&'()*+,;= %"<>\^`{|})"_s}}
        << "p=%3A%2F%3F%23%5B%5D%40%21%24%26%27%28%29%2A%2B%2C%3B%3D%20%25%22%3C%3E%5C%5E%60%7B%7C%7D"_ba;
    QTest::newRow("unreserved ones") << HTTPParameters {{u"p"_s, u"aZ09-._~"_s}} << "p=aZ09-._~"_ba;
    QTest::newRow("UTF-8, beyond the first plane too")
        << HTTPParameters {{u"名"_s, u"学校😀"_s}} << "%E5%90%8D=%E5%AD%A6%E6%A0%A1%F0%9F%98%80"_ba;
    QTest::newRow("already escaped: escaped again")
        << HTTPParameters {{u"p"_s, u"%41"_s}} << "p=%2541"_ba;
}

void HTTPQueryTest::encodes()
{
    QFETCH(HTTPParameters, parameters);
    QTEST(HTTPQuery::encoded(parameters), "query");
}

void HTTPQueryTest::appendsToTheAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<HTTPParameters>("parameters");
    QTest::addColumn<QByteArray>("url");

    const HTTPParameters parameters {{u"a"_s, u"1+1"_s}};
    QTest::newRow("no query") << u"http://h/do"_s << parameters << "http://h/do?a=1%2B1"_ba;
    QTest::newRow("a question mark") << u"http://h/do?"_s << parameters << "http://h/do?a=1%2B1"_ba;
    QTest::newRow("a query") << u"http://h/do?x=y%26z"_s << parameters
                             << "http://h/do?x=y%26z&a=1%2B1"_ba;
    QTest::newRow("no parameters") << u"http://h/do?x=1"_s << HTTPParameters {}
                                   << "http://h/do?x=1"_ba;
    QTest::newRow("Chinese path") << u"http://h/学校/do?"_s << parameters
                                  << "http://h/%E5%AD%A6%E6%A0%A1/do?a=1%2B1"_ba;
}

void HTTPQueryTest::appendsToTheAddress()
{
    QFETCH(QString, address);
    QFETCH(HTTPParameters, parameters);
    QTEST(HTTPQuery::urlWithQuery(address, parameters).toEncoded(), "url");
}

QTEST_GUILESS_MAIN(HTTPQueryTest)
#include "HTTPQueryTest.moc"
