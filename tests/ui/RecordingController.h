#pragma once

#include "ui/ViewController.h"

#include <QStringList>

//! Writes down what it is told, as "name:didLoad", "name:willAppear", "name:didAppear",
//! "name:back".
class RecordingController : public ViewController
{
    Q_OBJECT

public:
    RecordingController(const QString &name, QStringList &log)
        : m_log(log)
    {
        setTitle(name);
    }

    bool usesBack = false;

    void viewDidLoad() override { record(QStringLiteral("didLoad")); }
    void viewWillAppear() override { record(QStringLiteral("willAppear")); }
    void viewDidAppear() override { record(QStringLiteral("didAppear")); }
    bool handleBack() override
    {
        record(QStringLiteral("back"));
        return usesBack;
    }

private:
    void record(const QString &what) { m_log << title() + u':' + what; }

    QStringList &m_log;
};
