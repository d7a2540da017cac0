#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/texts/ManPage.h"

namespace mova::cli {
namespace {

using testing::HasSubstr;

Argument option(std::vector<std::string> names, const std::string& help, const std::string& group,
                ValueKind kind = ValueKind::None, const std::string& value = "") {
  Argument argument;
  argument.names = std::move(names);
  argument.help = help;
  argument.group = group;
  argument.kind = kind;
  argument.value = value;
  return argument;
}

/// INPUT, which may be left out.
Argument input() {
  Argument argument = option({"INPUT"}, "A file", "Positionals", ValueKind::File, "INPUT");
  argument.positional = true;
  return argument;
}

std::string pageWith(const Command& command) {
  return manPage({{"", "Convert files", "", {}}, command}, "mova 1.2.3");
}

TEST(ManPage, NameVersionAndSynopsis) {
  Argument inputs = input();
  inputs.required = inputs.repeatable = true;
  const std::string page = pageWith({"go", "Go on", "", {inputs}});
  EXPECT_THAT(page, HasSubstr(".TH MOVA 1 \"\" \"mova 1.2.3\" \"User Commands\"\n.SH NAME\nmova \\- convert files\n"));
  EXPECT_THAT(page, HasSubstr("\\fBmova go\\fR [\\fIOPTION\\fR]... \\fIINPUT\\fR...\n.br\n\\fBmova\\fR "));
}

TEST(ManPage, AnOptionalPositionalStandsInBrackets) {
  EXPECT_THAT(pageWith({"go", "Go on", "", {input()}}), HasSubstr("[\\fIOPTION\\fR]... [\\fIINPUT\\fR]\n"));
}

TEST(ManPage, OptionsInTheirGroupsBehindThePositionals) {
  const Argument quiet = option({"-q", "--quiet"}, "Say nothing", "Options");
  const Argument jobs = option({"--jobs"}, "So many", "Many files", ValueKind::Other, "N");
  const Argument when = option({"--when"}, "Then", "Options", ValueKind::Choice, "now");
  EXPECT_THAT(pageWith({"go", "Go on", "", {quiet, jobs, when, input()}}),
              HasSubstr(".SS mova go\nGo on.\n"
                        ".TP\n\\fIINPUT\\fR\nA file.\n"
                        ".TP\n\\fB\\-q\\fR, \\fB\\-\\-quiet\\fR\nSay nothing.\n"
                        ".TP\n\\fB\\-\\-when\\fR \\fBnow\\fR\nThen.\n"
                        ".PP\nMany files:\n"
                        ".TP\n\\fB\\-\\-jobs\\fR \\fIN\\fR\nSo many.\n"));
}

TEST(ManPage, WhatRoffWouldTakeForARequestOrAnEscape) {
  const std::string page = pageWith({"go", "Go on", ".TH is no macro here\n'nor this: C:\\ `x` ~^\n", {}});
  EXPECT_THAT(page, HasSubstr(".PP\n\\&.TH is no macro here\n\\(aqnor this: C:\\e \\(gax\\(ga \\(ti\\(ha\n"));
}

TEST(ManPage, TheFooterGoesToItsSections) {
  const std::string page = pageWith({"go",
                                     "Go on",
                                     "Prose\nof two lines.\n\nA list:\n  name   meaning\nand more.\n\n"
                                     "Examples:\n  mova go   goes\n  mova go on\n\n"
                                     "Exit status: 0 done,\n1 not done.\n",
                                     {}});
  EXPECT_THAT(page, HasSubstr("Go on.\n.PP\nProse\nof two lines.\n.PP\nA list:\n.TP\n\\fBname\\fR\nmeaning\n"
                              ".PP\nand more.\n.SH FORMATS\n"));
  EXPECT_THAT(page, HasSubstr(".SH EXIT STATUS\n.TP\n\\fBmova go\\fR\n0 done,\n1 not done.\n"
                              ".SH EXAMPLES\n.TP\n\\fBmova go\\fR\ngoes\n.TP\n\\fBmova go on\\fR\n.SH SEE ALSO\n"));
}

}  // namespace
}  // namespace mova::cli
