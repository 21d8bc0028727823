#pragma once

#include "ui/navigation/ScreenStack.h"

class Navigator;

//! A screen made of screens: the topmost of a stack under a navigation bar with its title and a
//! back button. Shown like any other screen, by the name screenName. Its first controller stays its
//! owner's; pushed controllers without a parent are deleted when popped, or with this one.
class NavigationController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(ScreenStack *screens READ screens CONSTANT)
    Q_PROPERTY(ViewController *topViewController READ topViewController NOTIFY topChanged)
    Q_PROPERTY(bool navigationBarHidden READ navigationBarHidden NOTIFY topChanged)
    Q_PROPERTY(bool backVisible READ backVisible NOTIFY topChanged)

public:
    static constexpr auto screenName = "NavigationController";

    //! \a rootName: a name registered with the navigator, which learns of this screen too.
    NavigationController(Navigator *navigator, const QString &rootName, ViewController *root,
        QObject *parent = nullptr);
    ~NavigationController() override;

    //! The one on whose stack a controller's screen lies; null when it lies on none.
    static NavigationController *of(const ViewController *controller);

    void push(const QString &name, ViewController *controller);
    //! Takes the topmost screen off; the first one stays.
    void pop();
    //! Takes all screens off but the first one.
    void popToRoot();
    bool contains(const ViewController *controller) const override;

    ScreenStack *screens() { return &m_screens; }
    ViewController *topViewController() const;
    bool navigationBarHidden() const;
    //! There is something to go back to: a lower screen, or the screen this one was presented over.
    bool backVisible() const;

    //! The bar's back button: pops, or dismisses the whole when only the first screen is left.
    Q_INVOKABLE void backPressed();

    void viewWillAppear() override;
    void viewDidAppear() override;
    bool handleBack() override;

Q_SIGNALS:
    void topChanged();

private:
    PresentedScreen *top() const;
    PresentedScreen *add(const QString &name, ViewController *controller);

    Navigator *m_navigator;
    ScreenStack m_screens;
};
