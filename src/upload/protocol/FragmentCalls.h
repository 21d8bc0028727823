#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

//! The calls that bring one part after the other to the storage, each answered once and later; a
//! failed one answers "no". Indexes are part numbers, from 1.
class FragmentCalls
{
public:
    using Reported = std::function<void(bool success)>;
    using ChunkChecked
        = std::function<void(bool isUploaded, const QString &authorization, const QString &date)>;

    virtual ~FragmentCalls() = default;

    virtual void checkChunkHasUploadWithIndex(
        int index, const QString &mineType, ChunkChecked completion)
        = 0;
    //! Puts a part to the storage; a success is the status 200 alone.
    virtual void uploadData(const QByteArray &data, int index, const QString &mineType,
        const QString &authorization, const QString &date, Reported completion)
        = 0;
    virtual void finishChuckWithIndex(int index, const QString &mineType,
        const QString &authorization, const QString &date, Reported completion)
        = 0;
    virtual void completeUpload(Reported completion) = 0;
};
