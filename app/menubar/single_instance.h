#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>
#include <memory>

namespace quenchly {

/// Makes sure that one program runs for each user and home folder. A second start asks the first to open its panel.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    enum class Outcome {
        first,        ///< this is the one that runs
        deaf,         ///< this is the one that runs, but a second start cannot reach it
        handedOver,   ///< another runs and was asked to open its panel
        unreachable,  ///< another runs but does not listen
    };

    /// Its files go into the session's runtime folder; where that is missing, is not this user's alone or has a name
    /// too long for a socket, into a folder of its own among the temporary files.
    explicit SingleInstance(const QString& homeFolder);

    /// Becomes the one that runs, or hands over to it together with an activation token (empty when there is none). A
    /// folder or a program of another user's is neither used nor believed: then this one is deaf.
    Outcome claim(const QString& activationToken);

    /// Why it is deaf, in a line.
    const QString& problem() const { return problem_; }

Q_SIGNALS:
    /// A second start asks for the panel.
    void openRequested(const QString& activationToken);

private:
    Outcome listen();
    enum class Answer { none, understood, anotherUsers };
    Answer handOver(const QString& activationToken);
    void receive();

    QString folder_;
    QString stem_;
    QLockFile lock_;
    QLocalServer server_;
    QString problem_;
};

}  // namespace quenchly
