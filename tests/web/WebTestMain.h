#pragma once

#include "web/engine/EngineSetup.h"

#include <QGuiApplication>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vant_UiPlugin)
Q_IMPORT_QML_PLUGIN(Vant_WebPlugin)

// The web engine wants to be set up before the application object.
#define VANT_WEB_TEST_MAIN(TestClass)                                                              \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        EngineSetup::beforeApplication();                                                          \
        QGuiApplication application(argc, argv);                                                   \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
