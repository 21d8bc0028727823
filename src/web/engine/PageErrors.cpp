#include "web/engine/PageErrors.h"

#include "platform/desktop/NetworkReachabilityManager.h"
#include "web/engine/WebView.h"
#include "web/host/PageHost.h"

PageErrors::PageErrors(WebView *webView, PageHost *host)
{
    connect(webView, &WebView::didFinishNavigation, this, &PageErrors::hide);
    connect(webView, &WebView::didFailNavigation, this, [this](const LoadProblem &problem) {
        m_isOfNetwork = problem.isOfNetwork;
        m_state.setReason(problem.text);
        m_state.setVisible(true);
    });
    connect(webView->travel(), &PageTravel::reloadWanted, this, [this, webView] {
        if (m_state.isVisible())
            Q_EMIT m_state.retry();
        else
            webView->reload();
    });
    connect(host->reachability(), &NetworkReachabilityManager::statusChanged, this,
        [this, network = host->reachability()] {
            if (m_state.isVisible() && m_isOfNetwork && network->isReachable())
                Q_EMIT m_state.retry();
        });
}

void PageErrors::hide()
{
    m_state.setVisible(false);
}

void PageErrors::showNoAddress()
{
    m_isOfNetwork = false;
    m_state.setReason({});
    m_state.setVisible(true);
}
