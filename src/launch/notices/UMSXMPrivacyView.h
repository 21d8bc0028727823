#pragma once

#include "launch/notices/NoticeViewController.h"

//! The notice as a card to read again: it asks for nothing and closes. No screen shows it at
//! present.
class UMSXMPrivacyView : public NoticeViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")

public:
    explicit UMSXMPrivacyView(const LaunchEnvironment &environment);

    bool handleBack() override { return false; }
};
