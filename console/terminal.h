#pragma once

namespace tov::console {

bool standardInputIsTerminal();
bool standardOutputIsTerminal();
bool standardErrorIsTerminal();

} // namespace tov::console
