#pragma once

#include "web/secondary/WebPageViewController.h"

#include <QSizeF>

#include <functional>

class MainQueue;

//! A page that is shown in landscape: on an upright window its content lies on the side, the top
//! at the window's right edge. The application is landscape only from its appearance until it
//! leaves, by its own bridge or the back key.
class OMOutLinkLandscapeViewController : public WebPageViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by whoever opens a page.")
    Q_PROPERTY(bool turned READ isTurned NOTIFY turnedChanged)

public:
    using SetLandscapeScreen = std::function<void(bool landscape)>;

    OMOutLinkLandscapeViewController(std::shared_ptr<WebPageProfile> profile, PageHost *host,
        MainQueue *mainQueue, SetLandscapeScreen setLandscapeScreen);
    ~OMOutLinkLandscapeViewController() override;

    void viewDidLoad() override;
    void viewDidAppear() override;
    bool handleBack() override;

    //! Whether the content lies on the side, a quarter turn to the right.
    bool isTurned() const { return m_size.height() > m_size.width(); }
    //! The screen's size is another one. The page is loaded again as soon as it stays, unless a
    //! keyboard has taken what is missing.
    Q_INVOKABLE void viewWillTransitionToSize(QSizeF size);
    //! Back to portrait, and away.
    Q_INVOKABLE void backLastVC();

Q_SIGNALS:
    void turnedChanged();

private:
    QUrl address() const override;
    void load() override;
    bool isForKeyboard(QSizeF size) const;
    void forceLandscape(bool landscape);

    MainQueue *m_mainQueue;
    SetLandscapeScreen m_setLandscapeScreen;
    QSizeF m_size; // without a keyboard
    QSizeF m_loadedSize; // when the page was last loaded
    bool m_loaded = false;
    bool m_landscape = false;
    bool m_leaving = false;
};
