#include "console/commandline/localtarget.h"

namespace tov::console {

void addLocalTarget(Command& command, LocalTarget& target, bool required)
{
    command
        .takes({.name = "file",
                .target = &target.path,
                .type = "FILE",
                .help = required ? "File of this computer; - is standard output" : "Write it to this file instead",
                .required = required})
        .flag("--force", target.force, "Replace the file if it is there");
}

} // namespace tov::console
