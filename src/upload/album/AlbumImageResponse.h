#pragma once

#include <QImage>
#include <QQuickImageResponse>

#include <functional>
#include <stop_token>

class QRunnable;

//! One picture that QML waits for. Owned by the QML engine, which deletes it some time after its
//! end.
class AlbumImageResponse : public QQuickImageResponse
{
    Q_OBJECT

public:
    using Read = std::function<QImage(std::stop_source stop)>;

    //! The work for a thread; it answers this response, or nobody once the response has gone.
    QRunnable *reading(Read read);

    QQuickTextureFactory *textureFactory() const override;
    QString errorString() const override;
    void cancel() override;

private:
    void finish(const QImage &image);

    QImage m_image;
    std::stop_source m_stop;
};
