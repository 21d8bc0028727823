#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <qqmlregistration.h>

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

    //! The controller that shows this one's screen inside its own; null when none does.
    ViewController *container() const { return m_container; }
    //! Whether this controller shows that one's screen inside its own.
    virtual bool contains(const ViewController *) const { return false; }

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

protected:
    //! For a controller that begins to show another's screen inside its own.
    void adopt(ViewController *controller) { controller->m_container = this; }

private:
    QPointer<ViewController> m_container;
    QString m_title;
};
