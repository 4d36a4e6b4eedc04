#include "navisworks/scene/node_steps.h"

#include <limits>
#include <utility>

namespace nv {

NodeSteps::NodeSteps(modeling::GeneralProgressStatus* dialog, std::size_t nodes, const std::string& title)
    : dialog_(dialog), left_(nodes) {
    if (dialog_ == nullptr) {
        return;
    }
    try {
        dialog_->open(static_cast<int>(std::min<std::size_t>(nodes, std::numeric_limits<int>::max())), title.c_str());
    } catch (...) {
        close();
        throw;
    }
}

void NodeSteps::visit() {
    if (ahead_ > 0) {
        --ahead_;
    } else {
        step();
    }
}

// An object that is written twice finds no step left for the second time.
void NodeSteps::takeAhead() {
    if (left_ > 0) {
        ++ahead_;
        step();
    }
}

void NodeSteps::step() {
    if (left_ > 0) {
        --left_;
    }
    if (dialog_ != nullptr) {
        dialog_->step();
    }
}

void NodeSteps::close() {
    if (dialog_ != nullptr) {
        std::exchange(dialog_, nullptr)->close();
    }
}

}  // namespace nv
