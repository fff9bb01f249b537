// ZTProduct.exe: the installation's executable. Only its version resource is ever read.
int main() {
    return 0;
}
