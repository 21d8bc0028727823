#include "app/parts/LoadAhead.h"

#include "platform/storage/KeyChainStore.h"

#include <QFontDatabase>
#include <QImageReader>

LoadAhead::LoadAhead()
{
    m_threads.start([] { QFontDatabase::families(); });
    m_threads.start([] {
        QImageReader::supportedImageFormats(); // the first picture would load them all
        KeyChainStore::loadAhead();
    });
}
