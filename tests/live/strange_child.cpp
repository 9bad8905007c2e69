// Stands in for the module's program and does what the environment's STRANGE says.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <thread>

int main()
{
    const char* asked = std::getenv("STRANGE");
    const std::string_view strange = asked == nullptr ? "" : asked;
    if (strange == "half")
        std::fputs("{\"format\":", stdout);
    if (strange == "other")
        std::puts("Hello");
    if (strange == "hang") {
        std::fclose(stdout);
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
    return strange == "code" ? 3 : 0;
}
