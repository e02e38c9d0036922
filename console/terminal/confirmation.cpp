#include "console/terminal/confirmation.h"

#include "console/terminal/interruption.h"
#include "console/terminal/terminal.h"
#include "tools/errors.h"
#include "tools/text/display.h"

#include <iostream>

namespace tov::console {

void askWhetherTo(const std::string& act)
{
    if (!standardInputIsTerminal() || !standardErrorIsTerminal())
        throw BadUse("--yes is needed to " + act + " where nobody can be asked");
    std::cerr << displayed(act) << "? [y/N] " << std::flush;
    std::string answer;
    if (Interruption::waitForInput())
        std::getline(std::cin, answer);
    else
        std::cerr << "^C\n";
    std::cin.clear(); // the end of the input answers this question only
    if (answer != "y" && answer != "yes" && answer != "Y" && answer != "Yes")
        throw Failure("nothing was changed");
}

} // namespace tov::console
