#include "upload/picker/AssetSelection.h"

#include <algorithm>

AssetSelection::AssetSelection(int limit, QObject *parent)
    : QObject(parent)
    , m_limit(std::max(1, limit))
{
}

bool AssetSelection::add(const PhotoAsset &asset)
{
    if (numberOf(asset.filePath) > 0)
        return true;
    if (isFull())
        return false;
    m_assets << asset;
    Q_EMIT changed();
    return true;
}

bool AssetSelection::remove(const QString &filePath)
{
    const int number = numberOf(filePath);
    if (number == 0)
        return false;
    m_assets.removeAt(number - 1);
    Q_EMIT changed();
    return true;
}

int AssetSelection::numberOf(const QString &filePath) const
{
    const auto found = std::find_if(m_assets.begin(), m_assets.end(),
        [&](const PhotoAsset &asset) { return asset.filePath == filePath; });
    return found == m_assets.end() ? 0 : int(found - m_assets.begin()) + 1;
}
