#pragma once

namespace sandbox {

//! "vant-sandbox push …": sends one message through a sandbox that runs already. The arguments
//! after "push"; throws BadArgument, or std::runtime_error when the sandbox refuses.
void pushCommand(int argc, char **argv);

} // namespace sandbox
