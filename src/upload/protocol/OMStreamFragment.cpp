#include "upload/protocol/OMStreamFragment.h"

using namespace Qt::StringLiterals;

QCborMap OMStreamFragment::encoded() const
{
    return {{u"fragmentId"_s, fragmentId}, {u"fragmentSize"_s, qint64(fragmentSize)},
        {u"fragementOffset"_s, qint64(fragementOffset)},
        {u"fragmentStatus"_s, int(fragmentStatus)}};
}

OMStreamFragment OMStreamFragment::decoded(const QCborMap &archive)
{
    return {archive[u"fragmentStatus"_s].toInteger() != 0, archive[u"fragmentId"_s].toString(),
        quint64(archive[u"fragmentSize"_s].toInteger()),
        quint64(archive[u"fragementOffset"_s].toInteger())};
}
