#pragma once
// "Now" as a day count from 1899-12-30 (the program's date type), through an interface so
// that tests can fix the time.
namespace ostrel {

class Clock {
  public:
    virtual ~Clock() = default;
    virtual double Now() const = 0;  // local date and time as a day count
};

class SystemClock : public Clock {
  public:
    double Now() const override;
};

class FixedClock : public Clock {
  public:
    explicit FixedClock(double now) : now_(now) {}
    double Now() const override { return now_; }
    void Set(double now) { now_ = now; }

  private:
    double now_;
};

}  // namespace ostrel
