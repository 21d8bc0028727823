#pragma once

#include "ui/feedback/ActionSheet.h"
#include "ui/feedback/AlertView.h"
#include "ui/feedback/ProgressHUD.h"
#include "ui/feedback/Toast.h"
#include "ui/navigation/Navigator.h"
#include "ui/theme/SafeArea.h"

//! All that the window shows besides the screens' own content. The application makes one and gives
//! it to RootView as its property `shell`; controllers take from it what they use.
class Shell : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shell is made in C++.")
    Q_PROPERTY(Navigator *navigator READ navigator CONSTANT)
    Q_PROPERTY(Toast *toast READ toast CONSTANT)
    Q_PROPERTY(ProgressHUD *progressHUD READ progressHUD CONSTANT)
    Q_PROPERTY(AlertView *alertView READ alertView CONSTANT)
    Q_PROPERTY(ActionSheet *actionSheet READ actionSheet CONSTANT)
    Q_PROPERTY(SafeArea *safeArea READ safeArea CONSTANT)

public:
    explicit Shell(MainQueue &queue, QObject *parent = nullptr);

    Navigator *navigator() { return &m_navigator; }
    Toast *toast() { return &m_toast; }
    ProgressHUD *progressHUD() { return &m_progressHUD; }
    AlertView *alertView() { return &m_alertView; }
    ActionSheet *actionSheet() { return &m_actionSheet; }
    SafeArea *safeArea() { return &m_safeArea; }

    //! The back key, for whatever is topmost: indicator (swallows it), sheet, alert, screen. False:
    //! nobody used it.
    Q_INVOKABLE bool back();

private:
    Toast m_toast;
    ProgressHUD m_progressHUD;
    AlertView m_alertView;
    ActionSheet m_actionSheet;
    SafeArea m_safeArea;
    Navigator m_navigator; // the last member: screens that go with it use the others
};
