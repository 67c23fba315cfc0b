function init() {
    return new Quillbrook();
}
