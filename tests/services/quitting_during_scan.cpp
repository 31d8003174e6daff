// Quits while a scan of the targets runs that never ends. Exit status 0 if that goes well.

#include <QCoreApplication>
#include <future>
#include <memory>
#include <utility>

#include "background_scan.h"

namespace {

/// Scans the real table over and over, so that whatever a scan uses is in use while the program ends.
class EndlessTable final : public quenchly::ProcessTable {
public:
    explicit EndlessTable(std::shared_ptr<std::promise<void>> begun) : begun_(std::move(begun)) {}

    void beginRefresh() override
    {
        for (bool isFirst = true;; isFirst = false) {
            quenchly::TargetScanner::rows(*real_, {.paused = {{.label = "my.model"}, {.label = "mymodel"}}});
            if (isFirst)
                begun_->set_value();
        }
    }
    std::vector<quenchly::ProcessId> named(const std::string&) override { return {}; }
    std::vector<quenchly::ProcessId> matching(const std::string&) override { return {}; }
    std::map<quenchly::ProcessId, std::string> states(const std::vector<quenchly::ProcessId>&) override { return {}; }

private:
    std::unique_ptr<quenchly::ProcessTable> real_ = quenchly::makeProcessTable();
    std::shared_ptr<std::promise<void>> begun_;
};

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const auto begun = std::make_shared<std::promise<void>>();
    quenchly::BackgroundScan scan([begun] { return std::make_unique<EndlessTable>(begun); });
    scan.request({});
    begun->get_future().wait();
    return 0;
}
