#pragma once

#include "web/secondary/WebPageViewController.h"

#include <QColor>
#include <QPointF>

//! A plain page of the network, or a text of its own, under a bar with its title.
class OMOutLinkViewController : public WebPageViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by whoever opens a page.")
    Q_PROPERTY(QColor barColor READ barColor CONSTANT)

public:
    OMOutLinkViewController(std::shared_ptr<WebPageProfile> profile, PageHost *host);

    QString statusColor; //!< of the bar and the strip above it; empty: the shell's own
    QString htmlStr; //!< shown instead of the page when it is not empty

    //! The screen has a bar of its own, for its colour.
    bool prefersNavigationBarHidden() const override { return true; }
    QColor barColor() const;
    //! A finger has moved over the page, from one point to another, in a view this wide. A level
    //! stroke from the left edge goes back in the page's history, one from the right edge forward.
    Q_INVOKABLE void swiped(QPointF from, QPointF to, double width);

private:
    void load() override;
};
