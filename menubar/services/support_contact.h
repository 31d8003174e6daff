#pragma once

#include <string>

#include "system.h"

/// A mail to the support that the user sends, or does not: nothing here sends anything.
namespace quenchly::SupportContact {

struct Facts {
    std::string version;
    std::string macModel;
};

struct Draft {
    std::string subject;
    std::string body;
    std::string clipboard;  ///< the whole mail as one text

    bool operator==(const Draft&) const = default;
};

/// Holds the two facts and the start of a text, nothing about what the machine does.
Draft reportDraft(const Facts& facts);

/// The address of the support form, which is told a known version.
std::string supportPageURL(const std::string& version);

struct Mail {
    std::string subject;
    std::string body;
};

/// Opens the user's mail program on a mail to the support. Whether there is one is not looked at.
void openMailto(const System& system, const Mail& mail);

/// Copies the draft, then offers the ways to send it. Returns when the user has chosen.
void presentReportProblem(const System& system, const Facts& facts);

}  // namespace quenchly::SupportContact
