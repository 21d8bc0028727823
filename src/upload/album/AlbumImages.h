#pragma once

#include <QObject>
#include <qqmlregistration.h>

#include <chrono>

class QJSEngine;
class QQmlEngine;

//! Lets views show pictures of the album, from the first view on that names this singleton, and
//! tells what is learnt from reading clips. Owned by the engine, which gets its AlbumImageProvider
//! here.
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
