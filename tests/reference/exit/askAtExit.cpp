// A program that loads the plugin of its first argument, and asks it from the destructor of a
// static object that is older than everything the plugin brings. With a second argument it unloads
// the plugin and loads it again before that.
#include <cstdlib>
#include <dlfcn.h>
#include <iostream>

namespace {

bool (*answersRightly)() = nullptr;

struct Asker {
    ~Asker() {
        if (!answersRightly())
            std::_Exit(1);
    }
} asker;

void* load(const char* file) {
    void* const plugin = ::dlopen(file, RTLD_NOW | RTLD_LOCAL);
    if (plugin == nullptr) {
        std::cerr << ::dlerror() << '\n';
        std::_Exit(2);
    }
    answersRightly = reinterpret_cast<bool (*)()>(::dlsym(plugin, "answersRightly"));
    if (answersRightly == nullptr || !answersRightly())
        std::_Exit(3);
    return plugin;
}

}  // namespace

int main(int argc, char** argv) {
    void* const plugin = load(argv[1]);
    if (argc > 2) {
        ::dlclose(plugin);
        static_cast<void>(load(argv[1]));
    }
    return 0;
}
