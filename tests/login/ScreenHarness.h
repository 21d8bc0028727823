#pragma once

#include "login/LoginHarness.h"
#include "login/LoginViewController2.h"
#include "ui/NavigationController.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickView>

#include <optional>

//! The login flow in a window, as the application shows it; fingers and keys are the test's.
class ScreenHarness : public LoginHarness
{
public:
    static constexpr QSize phone {390, 844};

    //! \a textScale: as the application's font carries it.
    explicit ScreenHarness(SandboxProcess &sandbox, QSize size = phone, double textScale = 1);

    void show();
    //! The frontmost visible item with this accessible name, and this role where one is given; null
    //! when there is none.
    QQuickItem *named(const QString &name, QAccessible::Role role = QAccessible::NoRole) const;
    //! The accessible name of the item, null when it has none.
    static QString nameOf(QQuickItem *item);
    //! All visible items that have an accessible name.
    QList<QQuickItem *> namedItems() const;
    //! Touches the named item in its middle.
    void click(const QString &name, QAccessible::Role role = QAccessible::NoRole);
    //! Touches a field and types.
    void type(const QString &field, const QString &text);
    //! Leaves a picture for the eye, where one is wanted.
    void photograph(const QString &name);

    LoginViewController2 controller;
    std::optional<NavigationController> navigation; //!< made when its screens have names
    QQuickView view;
};
