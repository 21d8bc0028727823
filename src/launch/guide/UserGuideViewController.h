#pragma once

#include "launch/notices/LaunchEnvironment.h"
#include "ui/navigation/ViewController.h"

#include <QSize>
#include <QStringList>
#include <QVariant>

//! The guide of full-screen pages at the first start, over whatever the window shows. It goes when
//! the person has had enough of it and has agreed to its tip, and never comes back. Owned by the
//! navigator once it is shown, and deleted when it has gone.
class UserGuideViewController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QVariantList pages READ pages CONSTANT)

public:
    //! \a screenPixels chooses the drawings.
    UserGuideViewController(const LaunchEnvironment &environment, const QSize &screenPixels);

    //! Whether this is a start with the guide.
    static bool shouldShowWelcomeViewController(const UserDefaults &defaults);

    void show();
    //! "跳过" and "立即体验".
    Q_INVOKABLE void leave();

    bool isOverlay() const override { return true; }
    bool staysOverRoots() const override { return true; }
    bool handleBack() override { return true; }

    //! Each page's picture, heading, text and colour.
    QVariantList pages() const;

private:
    void dismiss();

    LaunchEnvironment m_environment;
    QString m_series;
};
