// SPDX-License-Identifier: GPL-3.0-or-later
// What is left open when moc does not run on a class with Q_OBJECT.
#define EXPORTED extern "C" __attribute__((visibility("default")))

class Counter
{
public:
    virtual ~Counter() = default;
    virtual int metaCall();
};

EXPORTED void Execute0()
{
    const Counter *volatile counter = new Counter;
    delete counter;
}

EXPORTED bool IsDone()
{
    return true;
}

EXPORTED void Cleanup() { }
