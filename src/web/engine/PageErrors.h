#pragma once

#include "ui/feedback/ErrorViewState.h"

class PageHost;
class WebView;

//! What stands in place of the page of a view that could not be loaded, and why. The network's
//! return tries again by itself. Owned by the controller of the view's screen, which loads.
class PageErrors : public QObject
{
    Q_OBJECT

public:
    PageErrors(WebView *webView, PageHost *host);

    ErrorViewState *state() { return &m_state; }
    void hide();
    //! There is no address to load.
    void showNoAddress();

private:
    ErrorViewState m_state;
    bool m_isOfNetwork = false;
};
