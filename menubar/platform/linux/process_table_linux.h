#pragma once

#include <memory>
#include <string>

#include "process_table.h"

namespace quenchly {

/// The process table read from a folder laid out as `/proc`.
///
/// A process is known by its id and the inode number of its entry, which the listing gives for nothing: a reused id has
/// another inode. Neither changes on exec, but only a process that has used processor time can have called exec or
/// rewritten its arguments. So a known process is looked at, which costs one reading of its clock, and its command line
/// is read again only if it has run since:
/// - on every refresh while it is young or matches something: a fork followed by exec is noticed at the next refresh,
///   and so is the end of a match;
/// - else in turn: an exec in a long-running process is noticed within some refreshes, few of them where most of the
///   machine's processes sleep, and always within a minute where there is a refresh a second.
/// Where there is no clock to read, every look counts as having run.
///
/// Listing every process is the greater part of a refresh, and ids are given out in ascending order. So a question that
/// was asked before needs no listing: what is new is among the few ids given out since, and what matched is watched.
/// Every few refreshes the listing is made all the same, and whenever the ids tell too little.
///
/// The expressions asked for most recently are remembered with their answers, as many as one scan of the targets takes.
/// `CommandLineExpression` says what an expression is.
std::unique_ptr<ProcessTable> makeLinuxProcessTable(const std::string& procFolder = "/proc");

}  // namespace quenchly
