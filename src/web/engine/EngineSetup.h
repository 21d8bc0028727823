#pragma once

//! What the web engine is told before it starts.
namespace EngineSetup {

//! Before the application object is made, once. What the environment tells the engine stays.
void beforeApplication();

}
