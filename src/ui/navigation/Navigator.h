#pragma once

#include "ui/navigation/ScreenStack.h"

#include <QHash>

//! Which screen the window shows: one root, and full-screen modals over it. One for the process,
//! owned by Shell.
//!
//! Screens are asked for by name, so that a room opens another's screen without knowing it.
//! RootView shows what stands here; without a RootView screens are recorded and signalled, but no
//! view is made and no controller told. Controllers of roots stay their owners'. A modal's
//! controller without a parent is the navigator's: deleted after its dismissal, or with the
//! navigator.
class Navigator : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The navigator is made in C++.")
    Q_PROPERTY(ScreenStack *screens READ screens CONSTANT)
    Q_PROPERTY(bool animated READ animated WRITE setAnimated NOTIFY animatedChanged)
    Q_PROPERTY(QString rootName READ rootName NOTIFY rootChanged)

public:
    explicit Navigator(QObject *parent = nullptr);
    ~Navigator() override;

    void registerScreen(const QString &name, const QUrl &qml);
    //! The registered view, empty and logged for an unknown name.
    QUrl screenSource(const QString &name) const;

    //! Switches the root at once and drops the modals that do not stay over roots. The empty name
    //! is the blank placeholder. A root once made is kept when another takes its place: the same
    //! name and controller bring back the same view. Naming the present root again changes nothing.
    void setRootViewController(const QString &name, ViewController *controller = nullptr);
    //! Makes a root's view hidden in advance, so that the later switch takes no time.
    void prepare(const QString &name, ViewController *controller);
    QString rootName() const;
    ViewController *rootViewController() const;

    //! Opens a screen over everything, full screen, sliding up. False for an unknown name or a
    //! controller that is presented already.
    bool present(const QString &name, ViewController *controller);
    //! The same directly over the root, beneath all modals that are there.
    bool presentOverRoot(const QString &name, ViewController *controller);
    //! Closes the modal of this controller, or the one whose navigation controller holds it, and
    //! all above it.
    void dismiss(ViewController *controller);
    //! Whether this controller's modal is there, and not on its way out.
    bool isPresenting(const ViewController *controller) const;
    //! The topmost screen that is not on its way out, the root when there is no modal.
    ViewController *topViewController() const;

    //! The back key: the top screen's own use of it, else its dismissal. False when only a root is
    //! left.
    Q_INVOKABLE bool back();

    //! Ends: the modals that are still there go at once, and nobody is told. For whoever has made
    //! what they work with, before that goes.
    void end();

    ScreenStack *screens() { return &m_screens; }
    bool animated() const { return m_animated; }
    void setAnimated(bool animated);

Q_SIGNALS:
    void rootChanged();
    //! A modal begins to come.
    void presented(const QString &name);
    //! A modal has gone; its controller is still alive during this signal.
    void dismissed(ViewController *controller);
    void animatedChanged();

private:
    PresentedScreen *makeRoot(const QString &name, ViewController *controller);
    bool presentAt(int row, const QString &name, ViewController *controller);
    std::vector<PresentedScreen *> presentModals() const;
    void removeModal(PresentedScreen *modal);
    void updateCovered();
    PresentedScreen::Animation animation() const;

    ScreenStack m_screens;
    QHash<QString, QUrl> m_sources;
    PresentedScreen *m_root = nullptr;
    int m_rootCount = 0;
    bool m_animated = true;
};
