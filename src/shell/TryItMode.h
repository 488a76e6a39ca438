#pragma once

namespace shell {

// "-tryIt": the setup window's "Try it now" on the real desktop, then exit with status 0 two
// seconds later (or once the caret is placed, if the editor takes longer to come).
int runTryIt();

}  // namespace shell
