#pragma once

#include <QObject>
#include <qqmlregistration.h>

#include <chrono>

class QJSEngine;
class QQmlEngine;

//! Gives the engine its AlbumImageProvider as soon as a view names this singleton, and passes on
//! what is learnt from reading clips. Owned by the engine.
class AlbumImages : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static AlbumImages *create(QQmlEngine *engine, QJSEngine *);

Q_SIGNALS:
    void durationKnown(const QString &filePath, double milliseconds);

private:
    AlbumImages() = default;
};
