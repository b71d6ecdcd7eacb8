// Notes say what a test is at. They cost next to nothing until something fails: then every failure of the harness,
// and the last words of a test that faults, quote them.
//
//     Note note([&] { return "row " + std::to_string(y); });
#pragma once

#include <functional>
#include <string>

namespace rux::test {

class Note {
public:
    explicit Note(std::function<std::string()> text);
    ~Note();
    Note(const Note&) = delete;
    Note& operator=(const Note&) = delete;

    // All open notes of this thread, outermost first, one a line.
    static std::string all();

private:
    std::function<std::string()> text;
    Note* outer;
};

}
