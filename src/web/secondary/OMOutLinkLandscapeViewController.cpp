#include "web/secondary/OMOutLinkLandscapeViewController.h"

#include "platform/time/MainQueue.h"
#include "web/bridge/WebViewJavascriptBridge.h"
#include "web/secondary/PageAddress.h"

#include <QInputMethod>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

// A window that is drawn larger has a new size with every frame.
constexpr auto sizeSettles = 200ms;

}

OMOutLinkLandscapeViewController::OMOutLinkLandscapeViewController(
    std::shared_ptr<WebPageProfile> profile, PageHost *host, MainQueue *mainQueue,
    SetLandscapeScreen setLandscapeScreen)
    : WebPageViewController(std::move(profile), host, Bridge::Own)
    , m_mainQueue(mainQueue)
    , m_setLandscapeScreen(std::move(setLandscapeScreen))
{
    bridge()->registerHandler(
        u"backLastVC"_s, [this](const auto &, const auto &) { backLastVC(); });
}

OMOutLinkLandscapeViewController::~OMOutLinkLandscapeViewController()
{
    // Whoever takes all screens away asks none of them.
    forceLandscape(false);
}

void OMOutLinkLandscapeViewController::viewDidLoad()
{
    m_loaded = true;
    WebPageViewController::viewDidLoad();
}

void OMOutLinkLandscapeViewController::viewDidAppear()
{
    if (!m_leaving)
        forceLandscape(true);
}

bool OMOutLinkLandscapeViewController::handleBack()
{
    if (!WebPageViewController::handleBack())
        backLastVC();
    return true;
}

void OMOutLinkLandscapeViewController::backLastVC()
{
    m_leaving = true;
    forceLandscape(false);
    close();
}

void OMOutLinkLandscapeViewController::forceLandscape(bool landscape)
{
    if (std::exchange(m_landscape, landscape) != landscape)
        m_setLandscapeScreen(landscape);
}

QUrl OMOutLinkLandscapeViewController::address() const
{
    return PageAddress::withFourteenEscaped(urlStr);
}

void OMOutLinkLandscapeViewController::load()
{
    m_loadedSize = m_size;
    WebPageViewController::load();
}

// Window systems make room for a keyboard by a lower window.
bool OMOutLinkLandscapeViewController::isForKeyboard(QSizeF size) const
{
    return size.width() == m_size.width() && size.height() < m_size.height()
        && QInputMethod::queryFocusObject(Qt::ImEnabled, {}).toBool();
}

void OMOutLinkLandscapeViewController::viewWillTransitionToSize(QSizeF size)
{
    if (size == m_size || isForKeyboard(size))
        return;
    const bool wasTurned = isTurned();
    m_size = size;
    if (isTurned() != wasTurned)
        Q_EMIT turnedChanged();
    if (!m_loaded)
        return;
    m_mainQueue->after(sizeSettles, this, [this, size] {
        // When the keyboard goes, the size is what it was.
        if (size == m_size && size != m_loadedSize && !m_leaving)
            load();
    });
}
