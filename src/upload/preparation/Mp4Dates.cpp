#include "upload/preparation/Mp4Dates.h"

#include <QFile>
#include <QtEndian>

namespace {

constexpr qint64 headerSize = 8;
constexpr qint64 versionAndFlags = 4;

struct Box
{
    QByteArray type;
    qint64 start = 0; //!< of the content
    qint64 end = 0;
};

// The box that begins at the place; nothing when there is none that ends within the limit.
std::optional<Box> boxAt(QFile &file, qint64 place, qint64 limit)
{
    if (!file.seek(place))
        return std::nullopt;
    const QByteArray header = file.read(headerSize);
    if (header.size() != headerSize)
        return std::nullopt;
    Box box {header.last(4), place + headerSize, 0};
    quint64 size = qFromBigEndian<quint32>(header.constData());
    if (size == 1) {
        const QByteArray large = file.read(sizeof(quint64));
        if (large.size() != sizeof(quint64))
            return std::nullopt;
        size = qFromBigEndian<quint64>(large.constData());
        box.start += sizeof(quint64);
    }
    if (size < quint64(box.start - place) || size > quint64(limit - place))
        return std::nullopt;
    box.end = place + qint64(size);
    return box;
}

bool clearDates(QFile &file, const Box &box)
{
    char version = 0;
    if (!file.seek(box.start) || !file.getChar(&version))
        return false;
    const QByteArray none(version == 1 ? 16 : 8, '\0'); // made and modified
    const qint64 place = box.start + versionAndFlags;
    return place + none.size() <= box.end && file.seek(place) && file.write(none) == none.size();
}

bool clearDatesWithin(QFile &file, qint64 start, qint64 end)
{
    for (qint64 place = start; place < end;) {
        const auto box = boxAt(file, place, end);
        if (!box)
            return false;
        const bool holdsOthers = box->type == "moov" || box->type == "trak" || box->type == "mdia";
        const bool hasDates = box->type == "mvhd" || box->type == "tkhd" || box->type == "mdhd";
        if ((holdsOthers && !clearDatesWithin(file, box->start, box->end))
            || (hasDates && !clearDates(file, *box)))
            return false;
        place = box->end;
    }
    return true;
}

}

bool removeMp4Dates(const QString &filePath)
{
    QFile file(filePath);
    return file.open(QIODevice::ReadWrite) && file.size() > 0
        && clearDatesWithin(file, 0, file.size()) && file.flush();
}
