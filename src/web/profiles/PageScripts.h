#pragma once

#include <QPointF>
#include <QString>

//! Every script text that the shell runs in a page is made here.
namespace PageScripts {

//! Defines WebViewJavascriptBridge in a document that transport() serves. Both run before the
//! page's own scripts, in the main frame; this one first, in the page's world.
QString bridge();
//! Ties the document to the shell, in the world where the channel is.
QString transport();
//! Posts the document's cookies to a message handler "currentCookies". No such handler exists and
//! the post fails inside the page: deliberate.
QString postCurrentCookies();
//! Keeps the document itself from being scrolled by hand; parts of a page scroll as they like.
QString fixDocument();
//! Names a jump target for the page. Without quotes around its values, so that it sets nothing:
//! deliberate.
QString setJumpUrl();
QString disableUserSelect();
QString disableTouchCallout();
//! Evaluates to what the page says of the width it wants.
QString viewport();
//! Evaluates to the address of the image at a point of the page, in CSS pixels.
QString imageSourceAt(QPointF point);
//! Does nothing, for whoever wants to know that the page still runs scripts.
QString nothing();
//! Evaluates to whether the document shows nothing at all.
QString isEmpty();

}
