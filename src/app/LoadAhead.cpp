#include "app/LoadAhead.h"

#include "platform/KeyChainStore.h"

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
