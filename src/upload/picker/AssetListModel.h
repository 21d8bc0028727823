#pragma once

#include "platform/media/PhotoAsset.h"

#include <QAbstractListModel>
#include <QHash>
#include <qqmlregistration.h>

#include <chrono>
#include <optional>

class AssetSelection;

//! Photos or clips as the picker shows them: the grid with, it may be, a cell for the camera before
//! them, or the pages of the preview. Owned by ImagePickerController.
class AssetListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The picker makes it.")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    explicit AssetListModel(const AssetSelection *selection, QObject *parent = nullptr);

    //! Shows other assets, newest first; rows that stay are not touched.
    void update(const QList<PhotoAsset> &newestFirst);
    //! Shows other assets in this very order.
    void replace(const QList<PhotoAsset> &assets);
    void setCameraShown(bool shown);
    void setDuration(const QString &filePath, std::chrono::milliseconds duration);
    void remove(const QString &filePath);

    const QList<PhotoAsset> &assets() const { return m_assets; }
    //! Without the camera's cell.
    int count() const { return int(m_assets.size()); }
    //! Among the assets; -1 for a file that is not here.
    int indexOf(const QString &filePath) const;
    std::optional<PhotoAsset> find(const QString &filePath) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    enum Role {
        CameraRole = Qt::UserRole,
        FilePathRole,
        ImageRole,
        VideoRole,
        DurationRole,
        NumberRole,
        NameRole
    };

    int firstRow() const { return m_cameraShown ? 1 : 0; }
    int lastRow() const { return firstRow() + count() - 1; }
    QString nameOf(int index) const;
    void insertRun(qsizetype at, const QList<PhotoAsset> &run);
    void removeRun(qsizetype at, qsizetype length);
    void renumber();

    const AssetSelection *m_selection;
    QList<PhotoAsset> m_assets;
    QHash<QString, QString> m_durations; // by file path, "01:23"
    bool m_cameraShown = false;
};
