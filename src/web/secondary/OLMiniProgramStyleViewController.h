#pragma once

#include "web/secondary/WebPageViewController.h"

#include <QColor>
#include <QStringList>

//! A page in the manner of a mini program: a title, and a small capsule with a menu and a way out.
//! The page itself may close the screen and colour the strip behind the status bar.
class OLMiniProgramStyleViewController : public WebPageViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by whoever opens a page.")
    Q_PROPERTY(QColor statusBarColor READ statusBarColor NOTIFY statusBarColorChanged)
    Q_PROPERTY(QStringList menuItems READ menuItems CONSTANT)
    Q_PROPERTY(bool menuVisible READ isMenuVisible NOTIFY menuVisibleChanged)

public:
    OLMiniProgramStyleViewController(std::shared_ptr<WebPageProfile> profile, PageHost *host);

    QString naviColor; //!< of the strip; empty: the shell's own

    bool handleBack() override;

    QColor statusBarColor() const;
    QStringList menuItems() const;
    bool isMenuVisible() const { return m_menuVisible; }

    // The screen's touches.
    Q_INVOKABLE void leftButtonPressed();
    Q_INVOKABLE void menuItemChosen(int index);
    Q_INVOKABLE void menuDismissed();

Q_SIGNALS:
    void statusBarColorChanged();
    void menuVisibleChanged();

private:
    QUrl address() const override;
    void changeStatusColor(const QString &color);
    void reload();
    void setMenuVisible(bool visible);

    bool m_menuVisible = false;
};
