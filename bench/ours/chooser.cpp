// bench_chooser sort FILE: sorts and groups the names of the file, one a line.
// bench_chooser keys FILE: prints the search keys of the names.
// bench_chooser filter FILE TEXT...: types each text into the school chooser's search.

#include "common/Clocks.h"
#include "login/pinyin/BMChineseSort.h"
#include "login/pinyin/MandarinLatin.h"
#include "login/pinyin/PinyinSearchKey.h"
#include "login/school/SchoolListModel.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QStringList namesIn(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", qPrintable(path), qPrintable(file.errorString()));
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

void print(const QJsonObject &result)
{
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
}

void sort(const QStringList &names)
{
    const Clocks loading;
    MandarinLatin::prepare();
    const double loaded = loading.wall();
    const Clocks clocks;
    BMChineseSortSetting setting;
    setting.sortMode = BMChineseSortSetting::SortMode::Transliteration;
    const auto sections = BMChineseSort::sortAndGroup(names, setting);
    print({{u"wall_ms"_s, clocks.wall()}, {u"loading_ms"_s, loaded},
        {u"sections"_s, sections.firstLetterArray.size()}});
}

void printKeys(const QStringList &names)
{
    MandarinLatin latin;
    for (const QString &name : names)
        std::puts(qUtf8Printable(
            PinyinSearchKey::transformToPinyin(name, PinyinSearchKey::QuanPin::No, latin)));
}

void filter(const QStringList &names, const QStringList &texts)
{
    QList<DataModel> schools;
    for (const QString &name : names)
        schools << DataModel {name, u"code"_s, false, {}, {}, {}};
    SchoolListModel model;
    QEventLoop loop;
    const auto wait = [&] { loop.exec(); };
    QObject::connect(&model, &SchoolListModel::shownChanged, &loop, &QEventLoop::quit);
    model.setSchools(schools);
    wait();

    // The first search of all starts the thread.
    model.setSearchText(u"?"_s);
    wait();
    QJsonArray times;
    QJsonArray found;
    for (const QString &text : texts) {
        const Clocks clocks;
        model.setSearchText(text);
        wait();
        times << clocks.wall();
        found << model.rowCount();
    }
    print({{u"press_ms"_s, times}, {u"found"_s, found}});
}

}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3)
        qFatal("usage: bench_chooser sort|keys|filter FILE [TEXT...]");
    const QStringList names = namesIn(arguments[2]);
    if (arguments[1] == u"sort")
        sort(names);
    else if (arguments[1] == u"keys")
        printKeys(names);
    else
        filter(names, arguments.mid(3));
    return EXIT_SUCCESS;
}
