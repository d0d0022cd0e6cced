#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QString>
#include <QStringList>

namespace tessara::tool {

// One command of the tool: what it is called, what it takes and what its help says.
struct CommandSpec {
    QString name;
    QString synopsis;        // arguments after the command, for the overview
    QString summary;         // one line for the overview
    QString description;     // the command's own --help text
    QStringList positionals; // names of required positional arguments, in order
    QList<QCommandLineOption> options;
    QStringList requiredOptions; // options that must be given
    bool talksToBackend = true;

    // Every command, in the order the overview lists them.
    static const QList<CommandSpec>& all();
    static const CommandSpec* find(const QString& name);
    // The text of `tessara --help`.
    static QString overview();
};

} // namespace tessara::tool
