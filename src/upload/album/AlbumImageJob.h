#pragma once

#include <QImage>
#include <QObject>
#include <QRunnable>

#include <functional>

//! Reads one picture on a thread of a pool, which owns it.
class AlbumImageJob : public QObject, public QRunnable
{
    Q_OBJECT

public:
    explicit AlbumImageJob(std::function<QImage()> read)
        : m_read(std::move(read))
    {
    }

    void run() override { Q_EMIT done(m_read()); }

Q_SIGNALS:
    void done(const QImage &image);

private:
    std::function<QImage()> m_read;
};
