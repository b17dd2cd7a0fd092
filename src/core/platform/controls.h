#pragma once
// Plain models of the controls a form's logic changes: captions, tool tips, enabled and
// visible states, texts, list items, check states, panel colours, tabs and timers.
// Each control tells its observers when one of its properties really changed, so that a
// window can follow it; the logic and its tests simply read and assign the properties:
//
//     form.comEdit.enabled = false;
//     EXPECT_FALSE(form.comEdit.enabled);
#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace ostrel {

// ---------------------------------------------------------------------------------------
// Observers

// Ends an observation when destroyed (or on Reset). Safe to outlive the observed object.
class Subscription {
  public:
    Subscription() = default;
    Subscription(std::weak_ptr<void> owner, std::function<void()> cancel)
        : owner_(std::move(owner)), cancel_(std::move(cancel)) {}
    Subscription(Subscription&& o) noexcept { *this = std::move(o); }
    Subscription& operator=(Subscription&& o) noexcept {
        if (this != &o) {
            Reset();
            owner_ = std::move(o.owner_);
            cancel_ = std::move(o.cancel_);
            o.cancel_ = nullptr;
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { Reset(); }

    void Reset() {
        if (cancel_ && !owner_.expired()) cancel_();
        cancel_ = nullptr;
        owner_.reset();
    }

  private:
    std::weak_ptr<void> owner_;
    std::function<void()> cancel_;
};

// A list of observers called in the order they subscribed. An observer may end its own
// or another observation while being called.
template <class... Args>
class Signal {
  public:
    using Handler = std::function<void(Args...)>;

    Signal() : slots_(std::make_shared<Slots>()) {}
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    [[nodiscard]] Subscription Subscribe(Handler h) {
        const int id = ++slots_->nextId;
        slots_->items.push_back({id, std::move(h)});
        std::weak_ptr<Slots> weak = slots_;
        return Subscription(slots_, [weak, id] {
            if (auto s = weak.lock()) s->Remove(id);
        });
    }

    void Emit(Args... args) const {
        auto keep = slots_;  // observers may unsubscribe while we walk
        std::vector<int> ids;
        ids.reserve(keep->items.size());
        for (const auto& item : keep->items) ids.push_back(item.id);
        for (int id : ids) {
            for (const auto& item : keep->items) {
                if (item.id == id) {
                    Handler h = item.handler;
                    h(args...);
                    break;
                }
            }
        }
    }

    size_t ObserverCount() const { return slots_->items.size(); }

  private:
    struct Slot {
        int id;
        Handler handler;
    };
    struct Slots {
        int nextId = 0;
        std::vector<Slot> items;
        void Remove(int id) {
            for (auto it = items.begin(); it != items.end(); ++it) {
                if (it->id == id) {
                    items.erase(it);
                    return;
                }
            }
        }
    };
    std::shared_ptr<Slots> slots_;
};

// ---------------------------------------------------------------------------------------
// Colours

struct Colour {
    uint8_t r = 255, g = 255, b = 255;
    bool operator==(const Colour&) const = default;
};

inline constexpr Colour kWhite{255, 255, 255};
inline constexpr Colour kBlack{0, 0, 0};
// Rows of melt glasses in the material lists.
inline constexpr Colour kMeltRowColour{255, 255, 192};
// Status cells and panels: found / ready, and not found / not ready.
inline constexpr Colour kStatusGreen{96, 208, 96};
inline constexpr Colour kStatusRed{240, 96, 96};
// Tool strip and status bar panels.
inline constexpr Colour kPanelColour{212, 208, 200};

std::ostream& operator<<(std::ostream& os, const Colour& c);

// ---------------------------------------------------------------------------------------
// Properties

// The base of every control: observers are told of each real change of a property.
class ControlBase {
  public:
    ControlBase() = default;
    ControlBase(const ControlBase&) = delete;
    ControlBase& operator=(const ControlBase&) = delete;
    virtual ~ControlBase() = default;

    [[nodiscard]] Subscription Observe(std::function<void()> observer) {
        return changed_.Subscribe(std::move(observer));
    }
    void NotifyChanged() const { changed_.Emit(); }

  private:
    Signal<> changed_;
};

// One value of a control. Reads like the value; assigning a different value notifies.
template <class T>
class Property {
  public:
    Property(ControlBase* owner, T initial = T{}) : owner_(owner), value_(std::move(initial)) {}
    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

    Property& operator=(const T& v) {
        if (!(value_ == v)) {
            value_ = v;
            owner_->NotifyChanged();
        }
        return *this;
    }

    const T& get() const { return value_; }
    operator const T&() const { return value_; }

    friend bool operator==(const Property& p, const T& v) { return p.value_ == v; }
    friend std::ostream& operator<<(std::ostream& os, const Property& p) { return os << p.value_; }

  private:
    ControlBase* owner_;
    T value_;
};

// ---------------------------------------------------------------------------------------
// Controls

// What every control has: caption (a "&" marks the shortcut letter), tool tip, enabled and
// visible.
class Control : public ControlBase {
  public:
    explicit Control(std::string initialCaption = {}, std::string initialToolTip = {})
        : caption(this, std::move(initialCaption)), toolTip(this, std::move(initialToolTip)) {}

    Property<std::string> caption;
    Property<std::string> toolTip;
    Property<bool> enabled{this, true};
    Property<bool> visible{this, true};
};

// A command button, a menu item, or a toggle button (`value` true while pressed).
class Button : public Control {
  public:
    using Control::Control;
    Property<bool> value{this, false};
};

// A label; `bold` is the weight of its type.
class Label : public Control {
  public:
    using Control::Control;
    Property<bool> bold{this, false};
};

// A text box.
class TextBox : public Control {
  public:
    using Control::Control;
    Property<std::string> text{this};
    Property<bool> locked{this, false};
};

// Why an entry that is no number is ignored, in a text box and in a grid cell alike:
// "\"abc\" is not a number: it is ignored and counts as 0."
std::string IgnoredEntryText(const std::string& text, const std::string& countsAs);

// A text box that takes a number. Text that is no number is kept as typed, never erased:
// the form ignores it and goes on with `countsAs` (0, or the number it last took), and the
// window marks the box and says why, as a grid marks such a cell.
class NumberBox : public TextBox {
  public:
    using TextBox::TextBox;
    Property<std::string> countsAs{this, "0"};

    // Shows a number the form took: the text, and what an entry that is no number counts as.
    void ShowNumber(const std::string& number) {
        text = number;
        countsAs = number.empty() ? std::string("0") : number;
    }
    // True while the box holds text that is no number.
    bool IsIgnoredEntry() const;
    // Why the entry is ignored: the box's tool tip and the help line.
    std::string IgnoredEntryNote() const { return IgnoredEntryText(text, countsAs); }
};

// What marks an entry that is no number, in a text box and in a grid cell alike.
inline constexpr Colour kIgnoredEntryBack{255, 205, 205};
inline constexpr Colour kIgnoredEntryText{170, 0, 0};

// A check box or an option button.
class CheckBox : public Control {
  public:
    using Control::Control;
    Property<bool> value{this, false};
};

// A panel (or frame) with a caption and a back colour.
class Panel : public Control {
  public:
    using Control::Control;
    Property<Colour> backColour{this, kPanelColour};
};

// A picture: which of a set of pictures is shown (0 for none).
class Picture : public Control {
  public:
    using Control::Control;
    Property<int> picture{this, 0};
};

// A tab strip: the current tab, 0-based.
class TabStrip : public Control {
  public:
    using Control::Control;
    Property<int> tab{this, 0};
};

// A timer: the logic sets interval and enabled; the window calls the unit's tick method.
class Timer : public ControlBase {
  public:
    explicit Timer(int intervalMs = 0) : interval(this, intervalMs) {}
    Property<int> interval;
    Property<bool> enabled{this, false};
};

// A list box or a drop-down list: items with item data, the current item (`listIndex`,
// -1 for none) and, for a multi-select list, the selected items.
class ListControl : public Control {
  public:
    explicit ListControl(bool multiSelect = false) : multiSelect_(multiSelect) {}

    void Clear();
    void AddItem(const std::string& text, int64_t itemData = 0);
    void SetItems(std::vector<std::string> texts);
    void RemoveItem(int index);

    int ListCount() const { return static_cast<int>(items_.size()); }
    // The text of item `index` ("" outside the list).
    std::string List(int index) const;
    int64_t ItemData(int index) const;
    void SetItemData(int index, int64_t data);
    const std::vector<std::string>& Items() const { return items_; }

    int listIndex() const { return listIndex_; }
    // Out of range means no current item.
    void SetListIndex(int index);
    // The text of the current item, or "".
    std::string Text() const { return List(listIndex_); }

    bool multiSelect() const { return multiSelect_; }
    bool Selected(int index) const;
    void SetSelected(int index, bool selected);
    int SelCount() const;
    std::vector<int> SelectedIndexes() const;

  private:
    bool InRange(int index) const { return index >= 0 && index < ListCount(); }

    bool multiSelect_;
    std::vector<std::string> items_;
    std::vector<int64_t> data_;
    std::vector<bool> selected_;
    int listIndex_ = -1;
};

// The caption with its shortcut marker removed: "&Close" -> "Close", "&&" -> "&".
std::string StripAccelerator(const std::string& caption);

}  // namespace ostrel
