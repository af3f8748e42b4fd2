/* A Windows console program that makes the profile calls a script names, so
   that the same script can run against the store and against the Windows
   functions, and their answers can be compared. Built with a mingw cross
   compiler, run under Wine.

   Standard input, one command a line, every text in hex ("-" for empty):
     C PATH          the calls that follow go to the file PATH
     R SECTION KEY   GetPrivateProfileStringA, default "", buffer of 255
     W SECTION KEY VALUE
                     WritePrivateProfileStringA
     D PATH          every section of PATH as the functions read it
   Standard output answers each command:
     C PATH
     R COUNT TEXT
     W RESULT
     D PATH, then one "S NAME TEXT" line a section: the section before the
       first header (NAME "-"), then each name the file lists, in order; TEXT
       is what GetPrivateProfileSectionA gives, NUL separators included. */
#include <windows.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

/* Decodes the next field of *cursor into a new NUL-terminated buffer. */
static char* nextField(char** cursor) {
    char* p = *cursor;
    while (*p == ' ')
        ++p;
    char* start = p;
    while (*p && *p != ' ' && *p != '\r' && *p != '\n')
        ++p;
    *cursor = p;
    size_t len = (size_t)(p - start);
    char* out = malloc(len / 2 + 1);
    size_t n = 0;
    if (!(len == 1 && *start == '-')) {
        for (size_t i = 0; i + 1 < len; i += 2)
            out[n++] = (char)(hexValue(start[i]) * 16 + hexValue(start[i + 1]));
    }
    out[n] = '\0';
    return out;
}

static void putHex(const char* data, size_t size) {
    if (size == 0) {
        fputs("-", stdout);
        return;
    }
    for (size_t i = 0; i < size; ++i)
        printf("%02x", (unsigned char)data[i]);
}

static void dumpFile(const char* path) {
    static char names[1 << 20];
    static char body[1 << 20];
    DWORD n = GetPrivateProfileSectionNamesA(names, sizeof names, path);
    DWORD size = GetPrivateProfileSectionA("", body, sizeof body, path);
    fputs("S - ", stdout);
    putHex(body, size);
    fputs("\n", stdout);
    for (const char* name = names; name < names + n && *name; name += strlen(name) + 1) {
        size = GetPrivateProfileSectionA(name, body, sizeof body, path);
        fputs("S ", stdout);
        putHex(name, strlen(name));
        fputs(" ", stdout);
        putHex(body, size);
        fputs("\n", stdout);
    }
}

int main(void) {
    static char line[1 << 20];
    char* file = NULL;
    while (fgets(line, sizeof line, stdin)) {
        char* cursor = line + 1;
        if (line[0] == 'C') {
            free(file);
            file = nextField(&cursor);
            printf("C %s", line + 2);
        } else if (line[0] == 'R' && file) {
            char* section = nextField(&cursor);
            char* key = nextField(&cursor);
            char buffer[255];
            memset(buffer, 0, sizeof buffer);
            DWORD count = GetPrivateProfileStringA(section, key, "", buffer, 255, file);
            printf("R %lu ", (unsigned long)count);
            putHex(buffer, count);
            fputs("\n", stdout);
            free(section);
            free(key);
        } else if (line[0] == 'W' && file) {
            char* section = nextField(&cursor);
            char* key = nextField(&cursor);
            char* value = nextField(&cursor);
            BOOL ok = WritePrivateProfileStringA(section, key, value, file);
            printf("W %d\n", ok ? 1 : 0);
            free(section);
            free(key);
            free(value);
        } else if (line[0] == 'D') {
            char* path = nextField(&cursor);
            printf("D %s", line + 2);
            dumpFile(path);
            free(path);
        }
        fflush(stdout);
    }
    free(file);
    return 0;
}
