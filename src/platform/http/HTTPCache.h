#pragma once

#include "platform/transport/HTTPTypes.h"

#include <QUrl>

#include <optional>

//! Answers kept on the disk, however old they are; the ones unused for the longest time go when it
//! gets too much. A file that was not written to its end is none.
class HTTPCache
{
public:
    static constexpr qint64 mostBytes = 50 * 1024 * 1024;

    explicit HTTPCache(const QString &folder);

    std::optional<HTTPResponse> find(const QUrl &url) const;
    //! Status, content type and body.
    void keep(const QUrl &url, const HTTPResponse &response);
    void remove(const QUrl &url);
    void clear();

private:
    QString pathOf(const QUrl &url) const;
    void makeRoom();

    QString m_folder;
};
