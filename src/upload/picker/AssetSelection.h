#pragma once

#include "platform/media/PhotoAsset.h"

#include <QList>
#include <QObject>
#include <qqmlregistration.h>

//! What has been chosen in the picker, in the order of choosing. Owned by ImagePickerController.
class AssetSelection : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The picker makes it.")
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(int limit READ limit CONSTANT)
    Q_PROPERTY(bool full READ isFull NOTIFY changed)

public:
    //! \a limit: the most assets, at least 1.
    explicit AssetSelection(int limit, QObject *parent = nullptr);

    //! False when it is full; an asset that is chosen already stays in its place.
    bool add(const PhotoAsset &asset);
    //! False when the file was not chosen.
    bool remove(const QString &filePath);
    //! From 1; 0 for a file that is not chosen.
    int numberOf(const QString &filePath) const;

    const QList<PhotoAsset> &assets() const { return m_assets; }
    int count() const { return int(m_assets.size()); }
    int limit() const { return m_limit; }
    bool isFull() const { return count() >= m_limit; }

Q_SIGNALS:
    void changed();

private:
    const int m_limit;
    QList<PhotoAsset> m_assets;
};
