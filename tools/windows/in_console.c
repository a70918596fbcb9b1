/* Runs a program in the console of this one, whose code page is GBK's, and fails when it is another afterwards. */
#include <process.h>
#include <stdint.h>
#include <windows.h>

int main(int count, char** words)
{
    enum { gbk = 936 };
    if (count < 2 || !SetConsoleOutputCP(gbk) || GetConsoleOutputCP() != gbk) return 3; /* no console */
    intptr_t status = _spawnv(_P_WAIT, words[1], (const char* const*)words + 1);
    return status != 0 ? 2 : GetConsoleOutputCP() != gbk;
}
