#include <iostream>
#include <string>
#include <vector>

#include "commands.h"
#include "invocation_log.h"
#include "l10n.h"

int main(int argc, char** argv)
{
    using namespace quenchly::demo;
    quenchly::L10n::testingLanguage = quenchly::AppLanguage::en;  // the checker writes English, whoever reads it
    const std::vector<std::string> words(argv, argv + argc);
    const std::vector<std::string> arguments(words.begin() + (words.empty() ? 0 : 1), words.end());
    Outcome outcome;
    if (const auto failure = recordInvocation(arguments))
        outcome = {.status = 1, .text = *failure};
    else
        outcome = runCommand(words.empty() ? "quenchly" : words.front(), arguments);
    if (outcome.status == 0)
        std::cout << outcome.text;
    else
        std::cerr << "quenchly: " << outcome.text << '\n';
    return outcome.status;
}
