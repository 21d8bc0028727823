#include "e2e/Life.h"
#include "e2e/Tour.h"

#include <QCoreApplication>
#include <QtQml/qqmlextensionplugin.h>

#include <cstdio>

Q_IMPORT_QML_PLUGIN(Vant_UiPlugin)
Q_IMPORT_QML_PLUGIN(Vant_LoginPlugin)
Q_IMPORT_QML_PLUGIN(Vant_UploadPlugin)
Q_IMPORT_QML_PLUGIN(Vant_LaunchPlugin)
Q_IMPORT_QML_PLUGIN(Vant_ServicesPlugin)
Q_IMPORT_QML_PLUGIN(Vant_WebPlugin)
Q_IMPORT_QML_PLUGIN(Vant_AppPlugin)

namespace {

constexpr int badStart = 2;

}

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const auto parsed = TourOptions::parse(arguments);
    if (const auto *problem = std::get_if<QString>(&parsed)) {
        std::fprintf(stderr, "vant-tour: %s\n", qUtf8Printable(*problem));
        return badStart;
    }
    const TourOptions &options = std::get<TourOptions>(parsed);
    if (options.help) {
        std::fputs(qUtf8Printable(TourOptions::usage()), stdout);
        return EXIT_SUCCESS;
    }
    if (options.life)
        return Life(options).run(argc, argv);

    QCoreApplication application(argc, argv);
    return Tour(options).run();
}
