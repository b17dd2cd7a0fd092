#include "core/platform/controls.h"

#include "core/platform/number_text.h"

namespace ostrel {

std::ostream& operator<<(std::ostream& os, const Colour& c) {
    return os << "RGB(" << int(c.r) << ", " << int(c.g) << ", " << int(c.b) << ")";
}

std::string IgnoredEntryText(const std::string& text, const std::string& countsAs) {
    return "\"" + text + "\" is not a number: it is ignored and counts as " + countsAs + ".";
}

bool NumberBox::IsIgnoredEntry() const {
    return !text.get().empty() && !IsValidNumber(text.get());
}

void ListControl::Clear() {
    if (items_.empty() && listIndex_ == -1) return;
    items_.clear();
    data_.clear();
    selected_.clear();
    listIndex_ = -1;
    NotifyChanged();
}

void ListControl::AddItem(const std::string& text, int64_t itemData) {
    items_.push_back(text);
    data_.push_back(itemData);
    selected_.push_back(false);
    NotifyChanged();
}

void ListControl::SetItems(std::vector<std::string> texts) {
    items_ = std::move(texts);
    data_.assign(items_.size(), 0);
    selected_.assign(items_.size(), false);
    listIndex_ = -1;
    NotifyChanged();
}

void ListControl::RemoveItem(int index) {
    if (!InRange(index)) return;
    items_.erase(items_.begin() + index);
    data_.erase(data_.begin() + index);
    selected_.erase(selected_.begin() + index);
    if (listIndex_ == index) {
        listIndex_ = -1;
    } else if (listIndex_ > index) {
        --listIndex_;
    }
    NotifyChanged();
}

std::string ListControl::List(int index) const {
    return InRange(index) ? items_[index] : std::string();
}

int64_t ListControl::ItemData(int index) const {
    return InRange(index) ? data_[index] : 0;
}

void ListControl::SetItemData(int index, int64_t data) {
    if (!InRange(index) || data_[index] == data) return;
    data_[index] = data;
    NotifyChanged();
}

void ListControl::SetListIndex(int index) {
    const int next = InRange(index) ? index : -1;
    if (next == listIndex_) return;
    listIndex_ = next;
    NotifyChanged();
}

bool ListControl::Selected(int index) const {
    if (!InRange(index)) return false;
    return multiSelect_ ? bool(selected_[index]) : index == listIndex_;
}

void ListControl::SetSelected(int index, bool selected) {
    if (!InRange(index)) return;
    if (!multiSelect_) {
        if (selected) {
            SetListIndex(index);
        } else if (listIndex_ == index) {
            SetListIndex(-1);
        }
        return;
    }
    if (selected_[index] == selected) return;
    selected_[index] = selected;
    NotifyChanged();
}

int ListControl::SelCount() const {
    return static_cast<int>(SelectedIndexes().size());
}

std::vector<int> ListControl::SelectedIndexes() const {
    std::vector<int> out;
    for (int i = 0; i < ListCount(); ++i) {
        if (Selected(i)) out.push_back(i);
    }
    return out;
}

std::string StripAccelerator(const std::string& caption) {
    std::string out;
    out.reserve(caption.size());
    for (size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&') {
            if (i + 1 < caption.size() && caption[i + 1] == '&') {
                out += '&';
                ++i;
            }
            continue;
        }
        out += caption[i];
    }
    return out;
}

}  // namespace ostrel
