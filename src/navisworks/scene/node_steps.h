// The steps of the progress dialog: one for each node of the trees.
#pragma once

#include "platform/progress.h"

#include <cstddef>
#include <string>

namespace nv {

// The objects of a zone are written when the walk meets the zone, long before it meets them: they take their steps
// then, so that the bar moves and a cancel is heard within a zone, too. Every step may raise the cancel. Closes the
// dialog at the end, on every way out.
class NodeSteps {
public:
    // `dialog` may be null, and then nothing is shown.
    NodeSteps(modeling::GeneralProgressStatus* dialog, std::size_t nodes, const std::string& title);
    ~NodeSteps() { close(); }
    NodeSteps(const NodeSteps&) = delete;
    NodeSteps& operator=(const NodeSteps&) = delete;

    // The walk has come to a node.
    void visit();
    // A node further down is written now.
    void takeAhead();
    void close();

private:
    void step();

    modeling::GeneralProgressStatus* dialog_;
    std::size_t left_;
    std::size_t ahead_ = 0;
};

}  // namespace nv
