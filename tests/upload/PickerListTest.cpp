#include "upload/picker/AssetListModel.h"
#include "upload/picker/AssetSelection.h"
#include "upload/picker/ImagePickerSettings.h"

#include <QTest>

using namespace Qt::StringLiterals;

class PickerListTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesOverThePagesColour_data();
    void takesOverThePagesColour();
    void touchesOnlyRowsThatChange_data();
    void touchesOnlyRowsThatChange();
};

void PickerListTest::takesOverThePagesColour_data()
{
    QTest::addColumn<QString>("colour");
    QTest::addColumn<QStringList>("seen");
    const QStringList own {u"#3dd187"_s, u"#3dd187"_s, u"#3dd187"_s, u"#aaaaaa"_s};
    QTest::newRow("none") << QString() << own;
    QTest::newRow("no colour") << u"green"_s << own;
    QTest::newRow("a page's") << u"#1668dc"_s << QStringList(4, u"#1668dc"_s);
}

void PickerListTest::takesOverThePagesColour()
{
    QFETCH(QString, colour);
    ImagePickerSettings settings;
    settings.setThemeColor(colour);
    const QStringList seen {settings.iconThemeColor.name(), settings.navigationBarColor.name(),
        settings.okButtonNormalColor.name(), settings.okButtonDisabledColor.name()};
    QTEST(seen, "seen");
}

void PickerListTest::touchesOnlyRowsThatChange_data()
{
    QTest::addColumn<QString>("before"); // a letter an asset, A the newest
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("steps");
    QTest::newRow("first") << u""_s << u"ABC"_s << 1;
    QTest::newRow("same") << u"ABC"_s << u"ABC"_s << 0;
    QTest::newRow("newer") << u"CDE"_s << u"ABCDE"_s << 1;
    QTest::newRow("gone in two places") << u"ABCDEF"_s << u"BCF"_s << 2;
    QTest::newRow("others") << u"ABEF"_s << u"CD"_s << 3;
    QTest::newRow("all gone") << u"ABC"_s << u""_s << 1;
}

void PickerListTest::touchesOnlyRowsThatChange()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    const auto assetsOf = [](const QString &letters) {
        QList<PhotoAsset> assets;
        for (const QChar letter : letters)
            assets << PhotoAsset {.filePath = letter,
                .modified = QDateTime::fromSecsSinceEpoch('Z' - letter.unicode())};
        return assets;
    };
    AssetSelection selection(9);
    AssetListModel model(&selection);
    model.setCameraShown(true);
    model.update(assetsOf(before));

    QString mirror = u'*' + before;
    int steps = 0;
    connect(
        &model, &AssetListModel::rowsRemoved, this, [&](const QModelIndex &, int first, int last) {
            mirror.remove(first, last - first + 1);
            ++steps;
        });
    connect(
        &model, &AssetListModel::rowsInserted, this, [&](const QModelIndex &, int first, int last) {
            for (int row = first; row <= last; ++row)
                mirror.insert(
                    row, model.index(row).data(model.roleNames().key("filePath")).toString());
            ++steps;
        });
    model.update(assetsOf(after));
    QCOMPARE(mirror, u'*' + after);
    QTEST(steps, "steps");
    QCOMPARE(model.rowCount(), after.size() + 1);
}

QTEST_GUILESS_MAIN(PickerListTest)
#include "PickerListTest.moc"
