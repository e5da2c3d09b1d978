// The Linux program: makes the platform, makes the main window, runs.

int main() { return 0; }
