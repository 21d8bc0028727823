#include "upload/picker/AssetListModel.h"

#include "upload/album/AlbumImageProvider.h"
#include "upload/picker/AssetSelection.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString durationText(std::chrono::milliseconds duration)
{
    // A clip of half a second has a length too.
    const auto seconds
        = std::max<qint64>(1, std::chrono::round<std::chrono::seconds>(duration).count());
    const QString minutesAndSeconds = u"%1:%2"_s.arg(seconds / 60 % 60, 2, 10, QChar(u'0'))
                                          .arg(seconds % 60, 2, 10, QChar(u'0'));
    return seconds < 3600 ? minutesAndSeconds
                          : QString::number(seconds / 3600) + u':' + minutesAndSeconds;
}

}

AssetListModel::AssetListModel(const AssetSelection *selection, QObject *parent)
    : QAbstractListModel(parent)
    , m_selection(selection)
{
    connect(selection, &AssetSelection::changed, this, [this] {
        if (!m_assets.isEmpty())
            Q_EMIT dataChanged(index(firstRow()), index(lastRow()), {NumberRole});
    });
}

void AssetListModel::update(const QList<PhotoAsset> &newestFirst)
{
    QList<PhotoAsset> wanted = newestFirst;
    if (!std::is_sorted(wanted.cbegin(), wanted.cend(), PhotoAsset::comesFirst))
        std::sort(wanted.begin(), wanted.end(), PhotoAsset::comesFirst);
    if (wanted == m_assets)
        return;

    // Both lists have one order: a walk along them finds what has gone and what has come.
    qsizetype at = 0;
    qsizetype next = 0;
    while (at < m_assets.size() || next < wanted.size()) {
        qsizetype gone = 0;
        while (at + gone < m_assets.size()
            && (next == wanted.size() || PhotoAsset::comesFirst(m_assets[at + gone], wanted[next])))
            ++gone;
        removeRun(at, gone);
        qsizetype come = 0;
        while (next + come < wanted.size()
            && (at == m_assets.size() || PhotoAsset::comesFirst(wanted[next + come], m_assets[at])))
            ++come;
        insertRun(at, wanted.mid(next, come));
        at += come;
        next += come;
        while (at < m_assets.size() && next < wanted.size()
            && !PhotoAsset::comesFirst(m_assets[at], wanted[next])
            && !PhotoAsset::comesFirst(wanted[next], m_assets[at]))
            m_assets[at++] = wanted[next++];
    }
    renumber();
}

void AssetListModel::replace(const QList<PhotoAsset> &assets)
{
    beginResetModel();
    m_assets = assets;
    endResetModel();
    Q_EMIT countChanged();
}

void AssetListModel::setCameraShown(bool shown)
{
    if (shown == m_cameraShown)
        return;
    if (shown)
        beginInsertRows({}, 0, 0);
    else
        beginRemoveRows({}, 0, 0);
    m_cameraShown = shown;
    if (shown)
        endInsertRows();
    else
        endRemoveRows();
}

void AssetListModel::setDuration(const QString &filePath, std::chrono::milliseconds duration)
{
    const QString text = durationText(duration);
    QString &known = m_durations[filePath];
    if (known == text)
        return;
    known = text;
    if (const int at = indexOf(filePath); at >= 0)
        Q_EMIT dataChanged(
            index(firstRow() + at), index(firstRow() + at), {DurationRole, NameRole});
}

void AssetListModel::remove(const QString &filePath)
{
    if (const int at = indexOf(filePath); at >= 0) {
        removeRun(at, 1);
        renumber();
    }
}

int AssetListModel::indexOf(const QString &filePath) const
{
    const auto found = std::find_if(m_assets.begin(), m_assets.end(),
        [&](const PhotoAsset &asset) { return asset.filePath == filePath; });
    return found == m_assets.end() ? -1 : int(found - m_assets.begin());
}

std::optional<PhotoAsset> AssetListModel::find(const QString &filePath) const
{
    const int at = indexOf(filePath);
    return at < 0 ? std::nullopt : std::optional(m_assets[at]);
}

int AssetListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : lastRow() + 1;
}

QVariant AssetListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int at = index.row() - firstRow();
    if (role == CameraRole)
        return at < 0;
    // The views want a value of the role's type from the camera's cell too.
    static const PhotoAsset none;
    const PhotoAsset &asset = at < 0 ? none : m_assets[at];
    switch (role) {
    case FilePathRole:
        return asset.filePath;
    case ImageRole:
        return at < 0 ? QUrl() : AlbumImageProvider::address(asset);
    case VideoRole:
        return asset.isVideo;
    case DurationRole:
        return m_durations.value(asset.filePath, u""_s);
    case NumberRole:
        return m_selection->numberOf(asset.filePath);
    case NameRole:
        return at < 0 ? u""_s : nameOf(at);
    default:
        return {};
    }
}

QHash<int, QByteArray> AssetListModel::roleNames() const
{
    return {{CameraRole, "camera"}, {FilePathRole, "filePath"}, {ImageRole, "image"},
        {VideoRole, "video"}, {DurationRole, "duration"}, {NumberRole, "number"},
        {NameRole, "name"}};
}

QString AssetListModel::nameOf(int index) const
{
    const PhotoAsset &asset = m_assets[index];
    return QStringLiteral("%1 %2").arg(asset.isVideo ? u"视频"_s : u"照片"_s).arg(index + 1);
}

void AssetListModel::insertRun(qsizetype at, const QList<PhotoAsset> &run)
{
    if (run.isEmpty())
        return;
    beginInsertRows({}, firstRow() + int(at), firstRow() + int(at + run.size()) - 1);
    m_assets.insert(at, run.size(), {});
    std::copy(run.begin(), run.end(), m_assets.begin() + at);
    endInsertRows();
}

void AssetListModel::removeRun(qsizetype at, qsizetype length)
{
    if (length == 0)
        return;
    beginRemoveRows({}, firstRow() + int(at), firstRow() + int(at + length) - 1);
    m_assets.remove(at, length);
    endRemoveRows();
}

void AssetListModel::renumber()
{
    if (!m_assets.isEmpty())
        Q_EMIT dataChanged(index(firstRow()), index(lastRow()), {NameRole});
    Q_EMIT countChanged();
}
