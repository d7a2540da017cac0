#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/texts/Completions.h"

namespace mova::cli {
namespace {

using testing::HasSubstr;
using testing::Not;

Argument option(std::vector<std::string> names, const std::string& help, ValueKind kind = ValueKind::None,
                const std::string& value = "") {
  Argument argument;
  argument.names = std::move(names);
  argument.help = help;
  argument.group = "Options";
  argument.kind = kind;
  argument.value = value;
  return argument;
}

/// Commands whose texts hold what shells take for something else.
std::vector<Command> hostileCommands() {
  const Argument flag = option({"-d", "--dull"}, "Don't: [see] C:\\ or $HOME");
  Argument choice = option({"--when"}, "Now or never", ValueKind::Choice, "now|never");
  choice.choices = {"now", "never"};
  Argument list = option({"--list"}, "Some", ValueKind::Folder, "DIR");
  list.repeatable = true;
  const Argument number = option({"--jobs"}, "Many", ValueKind::Other, "N");
  return {{"", "All", "", {flag}}, {"go", "It's: gone", "", {flag, choice, list, number}}};
}

TEST(Completions, BashOffersTheOptionsAndValuesOfACommand) {
  const std::string text = bashCompletion(hostileCommands());
  EXPECT_THAT(text, HasSubstr("    ' '*) _mova_words words \"$word\" --dull go ;;\n"));
  EXPECT_THAT(text, HasSubstr("    'go '*) _mova_words words \"$word\" --dull --when --list --jobs ;;\n"));
  EXPECT_THAT(text, HasSubstr("    'go --when') _mova_offer \"$word\" 'now' 'never' ;;\n"));
  EXPECT_THAT(text, HasSubstr("    'go --list') compopt +o default -o dirnames 2>/dev/null ;;\n"));
  EXPECT_THAT(text, HasSubstr("    'go --jobs') compopt +o default 2>/dev/null ;;\n"));
}

TEST(Completions, ZshQuotesTwice) {
  const std::string text = zshCompletion(hostileCommands());
  EXPECT_THAT(text, HasSubstr(R"(        '-d[Don'\''t\: \[see\] C\:\\ or $HOME]' \)"));
  EXPECT_THAT(text, HasSubstr(R"(        '--dull[Don'\''t\: \[see\] C\:\\ or $HOME]' \)"));
  EXPECT_THAT(text, HasSubstr(R"('--when=[Now or never]:now|never:(now never)' \)"));
  EXPECT_THAT(text, HasSubstr(R"('*--list=[Some]:DIR:_files -/' \)"));
  EXPECT_THAT(text, HasSubstr(R"('--jobs=[Many]:N: ')"));
  EXPECT_THAT(text, HasSubstr(R"(    'go:It'\''s\: gone')"));
}

TEST(Completions, FishQuotesOnce) {
  const std::string text = fishCompletion(hostileCommands());
  EXPECT_THAT(text, HasSubstr(R"(complete -c mova -n __fish_use_subcommand -f -a go -d 'It\'s: gone')"));
  EXPECT_THAT(text, HasSubstr("complete -c mova -n '__fish_seen_subcommand_from go' -s d -l dull "
                              R"(-d 'Don\'t: [see] C:\\ or $HOME')"));
  EXPECT_THAT(text, HasSubstr(" -l when -x -a 'now never' "));
  EXPECT_THAT(text, HasSubstr(" -l jobs -x -d "));
}

TEST(Completions, FormatsThatAreOnlyReadAreNotOfferedAsTargets) {
  for (const std::string& text :
       {bashCompletion(hostileCommands()), zshCompletion(hostileCommands()), fishCompletion(hostileCommands())}) {
    EXPECT_THAT(text, HasSubstr("'Sub Station Alpha'"));
    EXPECT_THAT(text, Not(HasSubstr("CapMaker")));
    EXPECT_THAT(text, HasSubstr("FrameRate"));
    EXPECT_THAT(text, Not(HasSubstr("Reserved")));
  }
}

}  // namespace
}  // namespace mova::cli
