// The form library: a modal form with buttons, check boxes and one kind of tree. The form's logic is a class that
// derives from OrnLogicForm and answers its events; a HostUi shows it or plays a user.
//
// Labels are UTF-16. Item handles stay valid until the tree is cleared.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

struct FormRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    bool operator==(const FormRect&) const = default;
};

class OrnLogicComponent {
public:
    virtual ~OrnLogicComponent() = default;
};

class OrnLogicControl : public OrnLogicComponent {
public:
    OrnLogicControl(int id, std::u16string label, FormRect rect) : id_(id), label_(std::move(label)), rect_(rect) {}
    int id() const { return id_; }
    const std::u16string& label() const { return label_; }
    const FormRect& rect() const { return rect_; }
    void setRect(const FormRect& rect) { rect_ = rect; }
    bool enabled() const { return enabled_; }
    void enable(bool on) { enabled_ = on; }

private:
    int id_;
    std::u16string label_;
    FormRect rect_;
    bool enabled_ = true;
};

class OrnLogicButton : public OrnLogicControl {
public:
    enum class Kind { Push, CheckBox };
    OrnLogicButton(Kind kind, int id, std::u16string label, FormRect rect)
        : OrnLogicControl(id, std::move(label), rect), kind_(kind) {}
    Kind kind() const { return kind_; }
    bool checked() const { return checked_; }
    void setChecked(bool on) { checked_ = on; }

private:
    Kind kind_;
    bool checked_ = false;
};

// A tree with a check box on every item.
class OrnLogicTree : public OrnLogicControl {
public:
    struct Node;
    using Item = Node*;
    struct Node {
        std::u16string label;
        void* data = nullptr;
        bool checked = false;
        Item parent = nullptr;
        std::vector<Item> children;
    };

    OrnLogicTree(int id, FormRect rect) : OrnLogicControl(id, {}, rect) {}

    // Null parent: the top level. insertLast puts the item last under its parent.
    Item insertLast(Item parent, std::u16string label, void* data);
    // Puts the item at its place by label: compared without regard to case, equal labels keep insertion order. The
    // siblings are expected to stand in that order already.
    Item insertSorted(Item parent, std::u16string label, void* data);
    const std::vector<Item>& topItems() const { return top_; }
    static const std::vector<Item>& children(Item item) { return item->children; }
    static Item parent(Item item) { return item->parent; }
    static bool checked(Item item) { return item->checked; }
    static void setChecked(Item item, bool on) { item->checked = on; }
    void select(Item item) { selected_ = item; }
    Item selected() const { return selected_; }
    std::size_t itemCount() const { return items_.size(); }
    void clear();
    void setBackground(int red, int green, int blue) { background_ = (red << 16) | (green << 8) | blue; }
    int background() const { return background_; }

    // The item under the mouse, as the click in hand says; null when there is none.
    Item itemUnderMouse() const { return underMouse_; }
    void setItemUnderMouse(Item item) { underMouse_ = item; }

private:
    Item insertAt(Item parent, std::size_t index, std::u16string label, void* data);

    std::deque<Node> items_;
    std::vector<Item> top_;
    Item selected_ = nullptr;
    Item underMouse_ = nullptr;
    int background_ = 0xFFFFFF;
};

class OrnLogicForm : public OrnLogicComponent {
public:
    enum Result { ResultOk = 1, ResultCancel = 2 };

    // Calls onInit, lets the host show the form until it ends, calls onClosing. Gives the result.
    int DoModal();

    // Events, called by the host while the form is open.
    virtual void onInit() = 0;
    virtual void onCommand(int, int) {}
    virtual void onSize(int, int) {}
    virtual void onControlClicked(int) = 0;
    virtual void onClosing() {}

    // What the host shows.
    const std::u16string& caption() const { return caption_; }
    int width() const { return width_; }
    int height() const { return height_; }
    const std::vector<OrnLogicControl*>& controls() const { return controls_; }
    OrnLogicControl* control(int id) const;
    bool ended() const { return ended_; }
    int result() const { return result_; }

protected:
    void setFrame(std::u16string caption, int width, int height);
    OrnLogicButton* createButton(OrnLogicButton::Kind kind, int id, std::u16string label, FormRect rect);
    OrnLogicTree* createTree(int id, FormRect rect);
    void end(int result);

private:
    std::u16string caption_;
    int width_ = 0;
    int height_ = 0;
    std::deque<OrnLogicButton> buttons_;
    std::deque<OrnLogicTree> trees_;
    std::vector<OrnLogicControl*> controls_;
    bool ended_ = false;
    int result_ = ResultCancel;
};
