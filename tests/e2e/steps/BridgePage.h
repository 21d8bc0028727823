#pragma once

#include <QJsonObject>
#include <QString>

class Driver;
struct Step;

//! The portal's page with a button for every handler of the bridge, and what the steps do there.
namespace BridgePage {

//! The step that leads there.
inline const QString step = QStringLiteral("bridge-page");
inline const QString path = QStringLiteral("/portal/bridge.html");

//! The step that presses a handler's button and sees what comes of it.
Step handler(const QString &name, void (*act)(Driver &));

//! From the portal.
void open(Driver &driver);
//! Waits until the page is there and stands on top.
void see(Driver &driver);
//! From a page that was opened here.
void comeBack(Driver &driver);

void press(Driver &driver, const QString &handler);
//! Selector of what the page shows of a handler's answer.
QString outputOf(const QString &handler);
//! Presses, and takes the answer, whose "result" must be of the type.
QJsonObject answerTo(Driver &driver, const QString &handler, const QString &type);

}
