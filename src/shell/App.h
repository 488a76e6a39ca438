#pragma once

namespace shell {

// The whole program: a one-shot command-line mode when one applies, else the normal launch.
int run(int argc, char** argv);

}  // namespace shell
