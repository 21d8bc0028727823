#pragma once

class STHomeViewController;
class WebViewJavascriptBridge;

//! The table of what the portal's pages may call.
namespace BridgeHandlers {

//! Registers every handler of the home container, in the order of the table.
void registerAll(WebViewJavascriptBridge *bridge, STHomeViewController *home);

}
