#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <qqmlregistration.h>

class NavigationController;

//! What stands behind one screen: its state, its commands and its answers to coming and going.
//! The screen's QML gets it as its property `controller`. Who owns a controller is said where it is
//! handed over, in Navigator and NavigationController.
class ViewController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)

public:
    explicit ViewController(QObject *parent = nullptr);
    ~ViewController() override;

    //! The navigation bar's text.
    QString title() const { return m_title; }
    void setTitle(const QString &title);

    //! The navigation controller on whose stack the screen lies; null when it lies on none.
    NavigationController *navigationController() const;

    //! Whether a navigation controller shows this screen without its bar. Asked before each
    //! appearance.
    virtual bool prefersNavigationBarHidden() const { return false; }

    //! Whether what lies beneath a presented screen stays visible, without taking input. Such a
    //! screen comes and goes at once, its view moves by itself, and what lies beneath hears
    //! nothing.
    virtual bool isOverlay() const { return false; }

    //! Whether a presented screen stays where it is when the root beneath it changes.
    virtual bool staysOverRoots() const { return false; }

    //! Once, before the first appearance; a view that was only made in advance has not been loaded
    //! yet.
    virtual void viewDidLoad() { }
    //! Before each appearance: the first one, and each time what covered the screen goes away.
    virtual void viewWillAppear() { }
    //! After each appearance, when the transition has ended.
    virtual void viewDidAppear() { }
    //! The back key. True: the screen has used it; false: the navigator does what is usual (pop,
    //! dismiss).
    virtual bool handleBack() { return false; }

Q_SIGNALS:
    void titleChanged();

private:
    friend class NavigationController;

    QPointer<NavigationController> m_navigationController;
    QString m_title;
};
