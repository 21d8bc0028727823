#pragma once

#include <QUrl>

//! Which addresses the web engine itself may follow.
namespace EngineNavigation {

//! A page of the network.
bool isLoadable(const QUrl &url);
//! Everything the engine shows itself. Links for other programs are not: the engine would start the
//! program on its own, and the page would go. Nor are the addresses by which a page asks for the
//! bridge, which it has already.
bool mayFollow(const QUrl &url);

}
