#pragma once

#include <QStringList>
#include <QVariant>
#include <QVector>

/// Who answers what is asked about things that programs show, by the ids that he gave them himself. GUI thread.
class AccessSource {
public:
    /// What can be asked, and the type of the answer.
    enum class What {
        Name,        ///< QString
        Description, ///< QString
        Role,        ///< uint, the accessibility protocol's number
        States,      ///< qulonglong, a bit for each of the protocol's numbers
        Place,       ///< QRect on the screen, px
        Text,        ///< QString: what is written in a field
        Number,      ///< double: what is in a field for numbers
        Children,    ///< QStringList of ids
    };

    AccessSource() = default;
    virtual ~AccessSource() = default;
    AccessSource(const AccessSource&) = delete;
    AccessSource& operator=(const AccessSource&) = delete;

    /// The answers, in the order of the things; an invalid one where a thing is gone or cannot tell.
    virtual QVector<QVariant> ask(What what, const QStringList& things) = 0;
};
